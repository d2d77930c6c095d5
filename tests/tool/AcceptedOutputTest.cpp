// What the commands print, whole, about the drawings that the tool draws itself and about an odd one: whoever reads it with
// a script of their own notices each word that changes.

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/Files.h"
#include "tests/support/Golden.h"
#include "tool/CommandLine.h"

namespace velt::tool {
namespace {

struct Listed {
  // Of the golden file.
  const char* name;
  std::vector<std::vector<const char*>> lines;
};

const Listed listings[] = {
    {"list",
     {{"list", "gallery.dxf"},
      {"list", "plan.dxf", "--layer", "Doors", "--json"},
      {"list", "plan.dxf", "--handle", "D0", "--values", "--json"},
      {"list", "plan.dxf", "--all", "--not", "--type", "Line"},
      {"list", "plan.dxf", "--where", "Length > 2000 and Layer = Walls"},
      {"list", "plan.dxf", "--where", "Lngth > 2000"},
      {"list", "plan.dxf", "--layer", "Wals"},
      {"list", "plan.dxf", "--handle", "FFFF"},
      {"list", "plan.dxf", "--in-blocks", "--block", "*"},
      {"list", "none.dxf"},
      {"list", "gallery.dxf", "--layout", "*"},
      {"list", "gallery.dxf", "--layout", "Nowhere"},
      {"list", "plan.dxf", "none.dxf", "gallery.dxf", "--type", "Circle"},
      {"list", "plan.dxf", "gallery.dxf", "--type", "Ellipse", "--json"},
      {"list", "gallery.dxf", "--type", "Linne"},
      {"list", "plan.dxf", "--block", "Nothing"},
      {"list", "plan.dxf", "--handle", "xyz"},
      {"list", "odd.dxf"},
      {"list", "odd.dxf", "--json"},
      {"list", "odd.dxf", "--handle", "2F", "--in-blocks"},
      {"list", "odd.dxf", "--all", "--where", "Color=Red"},
      {"list", "odd.dxf", "--all", "--not", "--layer", "Cut"}}},
    {"conditions",
     {{"list", "gallery.dxf", "--where", "Radius < 3"},
      {"list", "gallery.dxf", "--where", "Radius <= 3"},
      {"list", "gallery.dxf", "--where", "Radius > 3"},
      {"list", "gallery.dxf", "--where", "Radius >= 3"},
      {"list", "gallery.dxf", "--where", "Radius != 3"},
      {"list", "gallery.dxf", "--where", "has Radius and not @type = ARC"},
      {"list", "gallery.dxf", "--where", "@class like 'Dim*' or @type in (CIRCLE, ARC)"},
      {"list", "gallery.dxf", "--where", "not (has Layer)"},
      {"list", "gallery.dxf", "--where", "'Start angle' = 30 or Closed = Yes"},
      {"list", "gallery.dxf", "--where", "Layer in ('0', Text) and has Height"},
      {"list", "gallery.dxf", "--where", "@handle = 43 or @handle like '4?'"},
      {"list", "gallery.dxf", "--where", "Justify = Left"},
      {"list", "gallery.dxf", "--type", "MText", "--where", "Justify = Left"},
      {"list", "plan.dxf", "--where", "NUMBER >= 3"},
      {"list", "plan.dxf", "--where", "Length > long"},
      {"list", "plan.dxf", "--where", "Radius = 5 and"},
      {"list", "plan.dxf", "--where", "(Radius = 5"},
      {"list", "plan.dxf", "--where", "Radius ~ 5"},
      {"list", "plan.dxf", "--where", "Layer = 'Doors"},
      {"list", "plan.dxf", "--where", "@lyer = Doors"},
      {"list", "plan.dxf", "--where", "Layer in Doors"},
      {"list", "plan.dxf", "--where", "Layer = "},
      {"list", "plan.dxf", "--where", "= 3"}}},
    {"complete",
     {{"complete", ""},
      {"complete", "s"},
      {"complete", "show", ""},
      {"complete", "show", "plan.dxf", "--l"},
      {"complete", "show", "plan.dxf", "--layer", ""},
      {"complete", "show", "plan.dxf", "--layer", "Walls,do"},
      {"complete", "show", "plan.dxf", "--layer=wa"},
      {"complete", "show", "plan.dxf", "--block", ""},
      {"complete", "show", "odd.dxf", "--layout", ""},
      {"complete", "show", "plan.dxf", "--type", "C"},
      {"complete", "show", "plan.dxf", "--type", "Circle", "--where", ""},
      {"complete", "show", "plan.dxf", "--type", "Circle", "--where", "Radius "},
      {"complete", "show", "plan.dxf", "--type", "Circle", "--where", "Layer="},
      {"complete", "show", "plan.dxf", "--type", "Circle", "--where", "Layer=Doors "},
      {"complete", "show", "plan.dxf", "--where", "@layout="},
      {"complete", "show", "plan.dxf", "--where", "@block="},
      {"complete", "show", "plan.dxf", "--where", "@class="},
      {"complete", "table", "plan.dxf", "--type", "Circle", "--columns", "Layer,"},
      {"complete", "explain", "plan.dxf", "--type", "Circle", "R"},
      {"complete", "set", "plan.dxf", "--type", "Circle", ""},
      {"complete", "set", "plan.dxf", "--type", "Circle", "Layer="},
      {"complete", "set", "plan.dxf", "-o", ""},
      {"complete", "set", "plan.dxf", "--from", ""},
      {"complete", "set", "none.dxf", "--layer", ""},
      {"complete", "set", "plan.dxf", "--nothing="},
      {"complete", "shw", ""}}},
    {"help",
     {{"--help"},
      {"show", "--help"},
      {"list", "--help"},
      {"table", "--help"},
      {"info", "--help"},
      {"diff", "--help"},
      {"explain", "--help"},
      {"set", "--help"},
      {"draw", "--help"},
      {"sample", "--help"}}},
    {"info",
     {{"info", "plan.dxf"},
      {"info", "gallery.dxf"},
      {"info", "plan.dxf", "--json"},
      {"info", "odd.dxf"},
      {"info", "odd.dxf", "--json"},
      {"info", "empty.dxf"}}},
    {"show",
     {{"show", "gallery.dxf", "--all", "--choices"},
      {"show", "plan.dxf", "--type", "Line", "--values"},
      {"show", "plan.dxf", "--handle", "D0"},
      {"show", "gallery.dxf", "--handle", "43", "--json"},
      {"show", "gallery.dxf", "--type", "Hatch"},
      {"show", "plan.dxf", "gallery.dxf", "--type", "Circle"},
      {"show", "gallery.dxf", "--handle", "61"},
      {"show", "gallery.dxf", "--type", "DimRadial"},
      {"show", "odd.dxf", "--type", "Line", "--values", "--json"},
      {"show", "odd.dxf", "--handle", "38"},
      {"show", "plan.dxf", "--type", "Line,Circle", "--values"},
      {"show", "gallery.dxf", "--type", "BlockReference,ExternalReference", "--values"},
      {"show", "plan.dxf", "--type", "BlockReference", "--layer", "Furniture", "--values"},
      {"show", "plan.dxf", "--layer", "Electrical", "--choices", "--precise"},
      {"show", "gallery.dxf", "--type", "LWPolyline"},
      {"show", "gallery.dxf", "--type", "Viewport"},
      {"show", "odd.dxf", "--all"},
      {"show", "odd.dxf", "--all", "--json"},
      {"show", "odd.dxf", "--type", "Line", "--values"},
      {"show", "odd.dxf", "--type", "Spaceship"},
      {"show", "odd.dxf", "--type", "Text", "--debug", "--json"},
      {"show", "odd.dxf", "--type", "Text", "--debug"},
      {"show", "odd.dxf", "--type", "Leader"},
      {"show", "odd.dxf", "--layer", "Hidden"},
      {"show", "odd.dxf"}}},
    {"table",
     {{"table", "plan.dxf", "--layer", "Doors"},
      {"table", "gallery.dxf", "--all", "--columns", "Layer,Length,Area"},
      {"table", "gallery.dxf", "--type", "Circle,Arc", "--columns", "Radius,Center X", "--csv"},
      {"table", "gallery.dxf", "--type", "Arc", "--columns", "Radius", "--json"},
      {"table", "gallery.dxf", "--type", "Arc,Circle", "--columns", "all", "--csv"},
      {"table", "gallery.dxf", "--type", "Arc", "--columns", "Radus"},
      {"table", "gallery.dxf", "--type", "Arc", "--columns", "Radus", "--json"},
      {"table", "gallery.dxf", "--type", "LWPolyline", "--columns", "@layer,Vertex X,Vertex X#2,Closed"},
      {"table", "gallery.dxf", "--type", "LWPolyline", "--columns", "Vertex X,Closed,@type", "--json"},
      {"table", "gallery.dxf", "--type", "Arc", "--json"},
      {"table", "gallery.dxf", "--type", "Arc", "--tsv", "--precise"},
      {"table", "gallery.dxf", "plan.dxf", "--type", "Circle", "--columns", "Radius,Area", "--csv"},
      {"table", "gallery.dxf", "plan.dxf", "--type", "Circle", "--columns", "Radius,Area"},
      {"table", "gallery.dxf", "plan.dxf", "--type", "Circle", "--columns", "Radius,Area", "--json"},
      {"table", "gallery.dxf", "plan.dxf", "--type", "Circle", "--csv"},
      {"table", "gallery.dxf", "odd.dxf", "--type", "Circle"},
      {"table", "gallery.dxf", "odd.dxf", "--type", "Circle", "--columns", "ALL"},
      {"table", "gallery.dxf", "odd.dxf", "--type", "Circle", "--columns", "Layer,@handle", "--tsv"},
      {"table", "odd.dxf", "--type", "Text", "--columns", "Contents,Height", "--csv"},
      {"table", "odd.dxf", "--type", "Text", "--columns", "Contents,Height", "--tsv"},
      {"table", "odd.dxf", "--layer", "Hidden", "--columns", "Layer,Nothing"},
      {"table", "odd.dxf", "--all", "--columns", "Layer,Color,@block"}}},
    {"explain",
     {{"explain", "plan.dxf", "Length", "--all"},
      {"explain", "plan.dxf", "Radius", "--all"},
      {"explain", "plan.dxf", "Radius", "--all", "--json"},
      {"explain", "plan.dxf", "Layer", "--type", "Line"},
      {"explain", "plan.dxf", "Handle", "--handle", "D0"},
      {"explain", "gallery.dxf", "Nothing", "--all"},
      {"explain", "gallery.dxf", "Radius", "--type", "Line"},
      {"explain", "gallery.dxf", "Radis", "--type", "Line"},
      {"explain", "gallery.dxf", "Vertex X", "--type", "LWPolyline"},
      {"explain", "odd.dxf", "Vertex X", "--type", "LWPolyline"},
      {"explain", "odd.dxf", "Vertex X", "--type", "LWPolyline", "--json"},
      {"explain", "plan.dxf", "NUMBER", "--layer", "Doors"},
      {"explain", "gallery.dxf", "Rotation", "--type", "Text,MText", "--json"},
      {"explain", "gallery.dxf", "Height", "--type", "Text,MText"},
      {"explain", "gallery.dxf", "Area", "--type", "Circle,Arc"},
      {"explain", "gallery.dxf", "Center X", "--type", "Circle"},
      {"explain", "gallery.dxf", "ObjectName", "--type", "Circle"},
      {"explain", "gallery.dxf", "Arc Length", "--type", "Arc"},
      {"explain", "gallery.dxf", "EntityTransparency", "--type", "Arc"},
      {"explain", "gallery.dxf", "Text width", "--type", "Dim*"},
      {"explain", "plan.dxf", "Start X", "--type", "Line,Arc"},
      {"explain", "plan.dxf", "Start X", "--type", "Line", "--json"},
      {"explain", "plan.dxf", "Center X", "--type", "Circle,Arc"},
      {"explain", "odd.dxf", "NO", "--type", "BlockReference"},
      {"explain", "odd.dxf", "NO", "--handle", "38"},
      {"explain", "odd.dxf", "NO", "--type", "BlockReference,Text"},
      {"explain", "odd.dxf", "Layer", "--all"},
      {"explain", "odd.dxf", "Lineweight", "--all"},
      {"explain", "odd.dxf", "Lineweight", "--type", "Circle"},
      {"explain", "odd.dxf", "Height", "--type", "Text", "--json"},
      {"explain", "odd.dxf", "Color", "--type", "Line"},
      {"explain", "odd.dxf", "Layer", "--layer", "Hidden"},
      {"explain", "odd.dxf", "--all"}}},
    {"set",
     {{"set", "plan.dxf", "--type", "Line", "Layer=Doors", "--dry-run"},
      {"set", "plan.dxf", "--type", "Line", "Linetype scale*=2", "Color=Red", "--dry-run", "--json"},
      {"set", "plan.dxf", "--type", "Circle", "Radius=0", "--dry-run"},
      {"set", "plan.dxf", "--all", "Radius=5", "--dry-run"},
      {"set", "plan.dxf", "--handle", "D0", "Handle=5", "--dry-run"},
      {"set", "plan.dxf", "--handle", "D0", "Layer=Nowhere", "--dry-run"},
      {"set", "plan.dxf", "--handle", "D0", "Layer"},
      {"set", "plan.dxf", "--handle", "D0", "Layer=Walls"},
      {"set", "plan.dxf", "--layer", "Doors", "Layer=Walls", "Rotation+=90", "-o", "edited.dxf"},
      {"diff", "plan.dxf", "edited.dxf"},
      {"diff", "plan.dxf", "edited.dxf", "--handle", "D0", "--json"},
      {"diff", "plan.dxf", "plan.dxf"}}},
    {"set-more",
     {{"set", "odd.dxf", "--type", "Line", "Start X+=1", "Start Y-=0.5", "Start Z*=2", "-o", "moved.dxf"},
      {"set", "odd.dxf", "--type", "Line", "Start X/=0", "--dry-run"},
      {"set", "odd.dxf", "--type", "Text", "Contents=~s/,/;/", "Height/=2", "-o", "texts.dxf", "--json"},
      {"set", "odd.dxf", "--type", "Text", "Contents=~s/,/", "--dry-run"},
      {"set", "odd.dxf", "--type", "Line", "Layer=Walls", "Color=7", "-o", "walls.dxf", "--keep-going"},
      {"set", "odd.dxf", "--type", "Line", "Layer=0", "--dry-run"},
      {"set", "odd.dxf", "--all", "Radius=3", "--dry-run"},
      {"set", "odd.dxf", "--type", "LWPolyline", "Vertex[2].X=7", "-o", "vertex.dxf"},
      {"set", "odd.dxf", "--handle", "34", "Vertex[2].X=7", "Vertex X#3=8.5", "-o", "vertex.dxf"},
      {"set", "odd.dxf", "--handle", "34", "Vertex[9].X=7", "--dry-run"},
      {"set", "odd.dxf", "--type", "Circle", "Radius=0", "--keep-going", "--dry-run", "--json"},
      {"set", "odd.dxf", "--type", "Circle", "Radius=0", "Layer=Walls", "--dry-run"},
      {"set", "odd.dxf", "--type", "Circle", "Radius=0", "Layer=Walls", "--dry-run", "--keep-going"},
      {"set", "plan.dxf", "--type", "Circle", "Radius=0", "--dry-run", "--keep-going"},
      {"set", "odd.dxf", "--type", "Circle", "Radis=1", "--dry-run"},
      {"set", "odd.dxf", "--layer", "Cut", "Radius=1", "--dry-run"},
      {"set", "odd.dxf", "--type", "Circle", "Radius=1", "-o", "odd.dxf"},
      {"set", "odd.dxf", "--type", "Circle", "Radius=1", "-o", "moved.dxf"},
      {"set", "odd.dxf", "--type", "Circle", "Radius=1", "-o", "moved.dxf", "--force"},
      {"set", "moved.dxf", "--type", "Circle", "Radius=1.25", "--in-place", "--json"},
      {"set", "moved.dxf", "--type", "Circle", "Radius=1.25", "--in-place"},
      {"set", "moved.dxf", "--type", "Circle", "Radius=1.25", "--in-place", "-o", "x.dxf"},
      {"set", "odd.dxf", "plan.dxf", "--type", "Circle", "Color=Green", "--dry-run"},
      {"set", "odd.dxf", "--from", "values.json", "--dry-run"},
      {"set", "odd.dxf", "--from", "values.json", "--dry-run", "--json"},
      {"set", "odd.dxf", "--from", "values.json", "-o", "from.dxf", "--keep-going"},
      {"set", "odd.dxf", "--from", "values.json", "--layer", "Walls", "--dry-run"},
      {"set", "odd.dxf", "--from", "rows.json", "--dry-run"},
      {"set", "odd.dxf", "--type", "Line", "--from", "rows.json", "--dry-run"},
      {"set", "odd.dxf", "--layer", "Hidden", "--from", "rows.json", "--dry-run"},
      {"set", "odd.dxf", "--from", "wrong.json", "--dry-run"},
      {"set", "odd.dxf", "--from", "none.json", "--dry-run"},
      {"diff", "odd.dxf", "moved.dxf"},
      {"diff", "odd.dxf", "from.dxf", "--json"},
      {"diff", "odd.dxf", "vertex.dxf", "--layer", "Walls"},
      {"diff", "odd.dxf", "less.dxf"},
      {"diff", "less.dxf", "odd.dxf", "--json"},
      {"diff", "odd.dxf", "none.dxf"},
      {"diff", "odd.dxf", "plan.dxf", "--layer", "Nowhere"},
      {"diff", "odd.dxf", "plan.dxf", "--type", "Spaceship,Circle", "--layer", "Walls"},
      {"draw", "odd.dxf", "-o", "odd.svg"},
      {"draw", "odd.dxf", "-o", "odd.svg"},
      {"draw", "odd.dxf", "--type", "Line", "--width", "300"},
      {"draw", "odd.dxf", "--layout", "Nowhere"},
      {"sample", "odd.dxf"},
      {"sample", "odd.dxf", "--gallery", "--force"}}},
};

// Pairs as lines of a code, a blank and a value.
std::string drawingText(std::string_view lines) {
  std::string text;
  std::istringstream in{std::string(lines)};
  for (std::string line; std::getline(in, line);) {
    const std::size_t blank = line.find(' ');
    text += line.substr(0, blank) + "\n" + (blank == std::string::npos ? "" : line.substr(blank + 1)) + "\n";
  }
  return text;
}

// Away from the origin, with units of few places, layers in every state, two entities of one handle, texts that tables must
// quote, data of applications, and what the host does not understand.
constexpr std::string_view oddDrawing = R"(0 SECTION
2 HEADER
9 $ACADVER
1 AC1027
9 $DWGCODEPAGE
3 ANSI_1252
9 $INSUNITS
70 4
9 $LUNITS
70 2
9 $LUPREC
70 2
9 $AUNITS
70 9
9 $AUPREC
70 1
9 $EXTMIN
10 -3
20 -7.5
9 $EXTMAX
10 41
20 52
30 6
0 ENDSEC
0 SECTION
2 TABLES
0 TABLE
2 LAYER
0 LAYER
5 10
100 AcDbSymbolTableRecord
100 AcDbLayerTableRecord
2 0
70 0
62 7
6 Continuous
0 LAYER
5 11
100 AcDbSymbolTableRecord
100 AcDbLayerTableRecord
2 Walls
70 0
62 12
6 Continuous
0 LAYER
5 12
100 AcDbSymbolTableRecord
100 AcDbLayerTableRecord
2 Hidden
70 5
62 -3
420 1193046
6 Continuous
0 ENDTAB
0 TABLE
2 CARGO
0 ENDTAB
0 ENDSEC
0 SECTION
2 BLOCKS
0 BLOCK
5 50
8 0
2 Door
70 0
0 LINE
5 51
100 AcDbEntity
8 Walls
100 AcDbLine
10 0
20 0
11 3
21 0
0 ENDBLK
0 BLOCK
5 53
8 0
2 *U1
70 1
0 ENDBLK
0 BLOCK
5 54
8 0
2 Site
70 4
0 ENDBLK
0 ENDSEC
0 SECTION
2 ENTITIES
0 LINE
5 2F
100 AcDbEntity
8 Walls
62 1
100 AcDbLine
10 -3.25
20 -7.5
30 2
11 40
21 -7.5
31 2
1001 PARTS
1000 bolt
1070 4
0 LINE
5 30
100 AcDbEntity
8 Walls
100 AcDbLine
10 -3.25
20 -7.5
30 2
11 -3.25
21 52.125
31 2
0 LINE
5 2F
100 AcDbEntity
8 Hidden
100 AcDbLine
10 1.001
20 2
30 3
11 4
21 5
31 6
0 CIRCLE
5 31
100 AcDbEntity
8 Walls
370 25
100 AcDbCircle
10 12
20 -3
30 1
40 2.5
0 CIRCLE
5 32
100 AcDbEntity
8 Forgotten
420 1193046
100 AcDbCircle
10 20
20 -3
30 1
40 2.501
0 LWPOLYLINE
5 34
100 AcDbEntity
8 0
100 AcDbPolyline
90 3
70 1
38 5
10 1
20 11
42 0.5
10 5
20 12
10 4
20 -9
0 LWPOLYLINE
5 35
100 AcDbEntity
8 0
100 AcDbPolyline
90 2
70 0
10 -1
20 -11
10 25
20 12
0 TEXT
5 36
100 AcDbEntity
8 0
100 AcDbText
10 2
20 3
30 4
40 2.5
1 one, two and "three"
50 30
0 TEXT
5 37
100 AcDbEntity
8 0
100 AcDbText
10 2
20 13
30 4
40 3
1 plain
0 INSERT
5 38
100 AcDbEntity
8 Walls
100 AcDbBlockReference
66 1
2 Door
10 15
20 25
30 1
41 2
50 90
0 ATTRIB
5 3A
100 AcDbEntity
8 Walls
100 AcDbText
10 15
20 25
40 1
1 D1
100 AcDbAttribute
2 NO
70 0
0 SEQEND
5 3A0
100 AcDbEntity
8 Walls
0 INSERT
5 3B
100 AcDbEntity
8 Walls
100 AcDbBlockReference
66 1
2 Door
10 25
20 25
30 1
41 2
50 90
0 ATTRIB
5 3C
100 AcDbEntity
8 Walls
100 AcDbText
10 25
20 25
40 1
1 D2
100 AcDbAttribute
2 NO
70 0
0 SEQEND
5 3C0
100 AcDbEntity
8 Walls
0 SPACESHIP
5 39
100 AcDbEntity
8 0
0 ENDSEC
0 SECTION
2 THINGS
0 ENDSEC
0 EOF
)";

constexpr const char* valuesOfTwo =
    R"({"handle":"31","class":"Circle","values":{"Radius":4,"Center X":12,"Layer":"Walls"},"units":{"Radius":"millimeters"}}
{"handle":"34","values":{"Vertex X":[1,6,4],"Closed":false,"Area":5}}
{"handle":"30","values":{"End Y":null,"Layer":"Hidden","End X":-4}}
)";
constexpr const char* valuesOfRows =
    R"({"rows":[{"name":"Layer","displayName":"Layer","value":"0"},
{"name":"Color","displayName":"Color","value":null,"isVaries":true},{"name":"Length","displayName":"Length","value":7}]})";

// The command, what it printed, and its exit code; names of files without the folder.
std::string printed(std::vector<const char*> arguments, const std::filesystem::path& folder) {
  std::string text = "$";
  std::vector<std::string> words{"veltprops"};
  for (const char* const argument : arguments) {
    text += std::string(" ") + argument;
    const std::string_view word = argument;
    const bool isFile = word.ends_with(".dxf") || word.ends_with(".json") || word.ends_with(".svg");
    words.push_back(isFile ? (folder / argument).string() : argument);
  }
  std::vector<const char*> pointers;
  for (const std::string& word : words)
    pointers.push_back(word.c_str());
  std::ostringstream out;
  std::ostringstream err;
  const int code = run(static_cast<int>(pointers.size()), pointers.data(), out, err);
  std::string output = out.str() + err.str();
  const std::string prefix = folder.string() + "/";
  for (std::size_t at = output.find(prefix); at != std::string::npos; at = output.find(prefix))
    output.erase(at, prefix.size());
  return text + "\n" + output + "exit code " + std::to_string(code) + "\n\n";
}

TEST(AcceptedOutput, IsThatOfEachCommand) {
  const tests::TemporaryFolder folder;
  const std::filesystem::path place = std::filesystem::path(folder.path("x")).parent_path();
  printed({"sample", "plan.dxf"}, place);
  printed({"sample", "--gallery", "gallery.dxf"}, place);
  const std::string odd = drawingText(oddDrawing);
  folder.write("odd.dxf", odd);
  const std::size_t circle = odd.find("0\nCIRCLE");
  folder.write("less.dxf", odd.substr(0, circle) + odd.substr(odd.find("0\nCIRCLE", circle + 1)));
  folder.write("empty.dxf", drawingText("0 SECTION\n2 ENTITIES\n0 ENDSEC\n0 EOF"));
  folder.write("values.json", valuesOfTwo);
  folder.write("rows.json", valuesOfRows);
  folder.write("wrong.json", "{\"handle\":\"31\",\"values\":{\"Radius\":{}}}");
  for (const Listed& listing : listings) {
    std::string text;
    for (const std::vector<const char*>& line : listing.lines)
      text += printed(line, place);
    EXPECT_TRUE(tests::matchesGolden(std::string("golden/output/") + listing.name + ".txt", text));
  }
}

}  // namespace
}  // namespace velt::tool
