#include "samples/Gallery.h"

#include <initializer_list>
#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "dxf/ModelLine.h"
#include "dxf/Numbers.h"
#include "samples/builder/DrawingBuilder.h"

namespace velt::samples {
namespace {

// An entity as code, blank, value, with bars between the pairs. A value behind an at sign is a handle by its name.
struct Exhibit {
  std::string_view type;
  std::string_view pairs;
};

using Names = std::map<std::string_view, Handle>;

std::vector<RawPair> pairsOf(std::string_view text, const Names& names) {
  std::vector<RawPair> pairs;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('|'), text.size());
    const std::string_view pair = text.substr(0, end);
    const std::size_t blank = pair.find(' ');
    std::string_view value = pair.substr(blank + 1);
    const bool isName = value.starts_with('@');
    pairs.push_back({dxf::parseInteger<int>(pair.substr(0, blank)).value_or(0),
                     isName ? dxf::formatHandle(names.at(value.substr(1))) : std::string(value)});
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pairs;
}

// clang-format off
constexpr Exhibit exhibits[] = {
    {"TEXT", "100 AcDbText|10 100|20 5|30 0|40 2.5|1 Centred|50 10|7 Standard|72 1|11 110|21 6|31 0|100 AcDbText|73 2"},
    {"3DFACE", "100 AcDbFace|10 0|20 20|30 0|11 10|21 20|31 0|12 10|22 30|32 5|13 0|23 30|33 5|70 2"},
    {"SOLID", "100 AcDbTrace|10 20|20 20|30 1|11 30|21 20|31 1|12 20|22 30|32 1|13 30|23 30|33 1|39 2"},
    {"TRACE", "100 AcDbTrace|10 40|20 20|30 0|11 42|21 20|31 0|12 40|22 30|32 0|13 42|23 30|33 0"},
    {"RAY", "100 AcDbRay|10 50|20 20|30 0|11 0.6|21 0.8|31 0.0"},
    {"XLINE", "100 AcDbXline|10 60|20 20|30 0|11 0.8|21 0.6|31 0.0"},
    {"SPLINE", "100 AcDbSpline|210 0|220 0|230 1|70 8|71 3|72 9|73 5|74 0|42 1e-9|43 1e-10|40 0|40 0|40 0|40 0|40 0.5|40 1|40 1|40 1|40 1|10 70|20 20|30 0|10 75|20 30|30 0|10 80|20 20|30 0|10 85|20 30|30 0|10 90|20 20|30 0"},
    {"SPLINE", "100 AcDbSpline|210 0|220 0|230 1|70 12|71 2|72 6|73 3|74 0|42 1e-9|43 1e-10|40 0|40 0|40 0|40 1|40 1|40 1|41 1|41 0.7071067811865476|41 1|10 100|20 20|30 0|10 100|20 30|30 0|10 90|20 30|30 0"},
    {"MLINE", "100 AcDbMline|2 STANDARD|340 @mlinestyle|40 2|70 0|71 1|72 2|73 2|10 110|20 20|30 0|210 0|220 0|230 1|11 110|21 20|31 0|12 1|22 0|32 0|13 0|23 1|33 0|74 2|41 0|41 0|75 0|74 2|41 -2|41 0|75 0|11 120|21 20|31 0|12 1|22 0|32 0|13 0|23 1|33 0|74 2|41 0|41 0|75 0|74 2|41 -2|41 0|75 0"},
    {"SHAPE", "100 AcDbShape|10 130|20 20|30 0|40 3|2 SIGN|50 30|41 1.5"},
    {"LEADER", "100 AcDbLeader|3 GALLERY|71 1|72 0|73 3|74 0|75 0|40 2.5|41 10|76 3|10 0|20 40|30 0|10 5|20 48|30 0|10 12|20 48|30 0|1001 ACAD|1000 DSTYLE|1002 {|1070 341|1005 @dot|1070 41|1040 4|1002 }"},
    {"TOLERANCE", "100 AcDbFcf|3 GALLERY|10 20|20 40|30 0|1 {\\Fgdt;j}%%v0.1%%v%%v%%v%%v|11 1|21 0|31 0"},
    {"MULTILEADER", "100 AcDbMLeader|270 2|300 CONTEXT_DATA{|40 1|10 60|20 48|30 0|41 2.5|140 3|145 1|174 1|175 1|176 2|177 0|290 1|304 Leading here|11 0|21 0|31 1|340 @standard|12 61|22 49|32 0|13 1|23 0|33 0|42 0|43 0|44 0|45 1|170 1|90 -1056964608|171 1|172 5|91 -939524096|141 1.5|92 0|291 0|292 0|173 0|293 0|142 0|143 0|294 0|295 0|296 0|110 0|120 0|130 0|111 1|121 0|131 0|112 0|122 1|132 0|297 0|302 LEADER{|290 1|291 1|10 58|20 48|30 0|11 1|21 0|31 0|90 0|40 2|304 LEADER_LINE{|10 50|20 40|30 0|10 54|20 46|30 0|91 0|305 }|303 }|301 }|340 @mleaderstyle|90 0|170 1|91 -1056964608|341 @byblock|171 -2|290 1|291 1|41 2|42 3|172 2|343 @standard|173 1|95 1|174 1|175 0|92 -1056964608|292 0|93 -1056964608|10 1|20 1|30 1|43 0|176 0|293 0|294 0|178 0|179 1|45 1|271 0|272 9|273 9"},
    {"MULTILEADER", "100 AcDbMLeader|270 2|300 CONTEXT_DATA{|40 1|10 90|20 48|30 0|41 2.5|140 3|145 1|174 1|175 1|176 1|177 0|290 0|296 1|341 @part|14 0|24 0|34 1|15 92|25 48|35 0|16 1|26 1|36 1|46 0|93 -1056964608|47 1|47 0|47 0|47 92|47 0|47 1|47 0|47 48|47 0|47 0|47 1|47 0|47 0|47 0|47 0|47 1|110 0|120 0|130 0|111 1|121 0|131 0|112 0|122 1|132 0|297 0|302 LEADER{|290 1|291 1|10 88|20 48|30 0|11 1|21 0|31 0|90 0|40 2|304 LEADER_LINE{|10 80|20 40|30 0|91 0|305 }|303 }|301 }|340 @mleaderstyle|90 0|170 1|91 -1023410171|341 @byblock|171 25|290 1|291 1|41 2|342 @dot|42 3|172 1|343 @standard|173 1|95 1|174 1|175 0|92 -1056964608|292 0|344 @part|93 -1056964608|10 1|20 1|30 1|43 0|176 0|293 0|294 0|178 0|179 1|45 1|271 0|272 9|273 9"},
    {"IMAGE", "100 AcDbRasterImage|90 0|10 100|20 40|30 0|11 0.1|21 0|31 0|12 0|22 0.1|32 0|13 200|23 100|340 @image|70 7|280 0|281 60|282 40|283 10|360 0|71 1|91 2|14 -0.5|24 -0.5|14 199.5|24 99.5"},
    {"WIPEOUT", "100 AcDbWipeout|90 0|10 130|20 40|30 0|11 10|21 0|31 0|12 0|22 10|32 0|13 1|23 1|340 0|70 7|280 1|281 50|282 50|283 0|360 0|71 2|91 5|14 -0.5|24 0.5|14 0.5|24 0.5|14 0.5|24 -0.5|14 -0.5|24 -0.5|14 -0.5|24 0.5"},
    {"MESH", "100 AcDbSubDMesh|71 2|72 1|91 1|92 4|10 180|20 40|30 0|10 190|20 40|30 0|10 180|20 50|30 0|10 180|20 40|30 10|93 16|90 3|90 0|90 2|90 1|90 3|90 0|90 1|90 3|90 3|90 1|90 2|90 3|90 3|90 0|90 3|90 2|94 6|90 0|90 1|90 1|90 2|90 2|90 0|90 0|90 3|90 1|90 3|90 2|90 3|95 6|140 0|140 0|140 0|140 0|140 0|140 0|90 0"},
    {"PDFUNDERLAY", "100 AcDbUnderlayReference|340 @underlay|10 200|20 40|30 0|41 0.5|42 0.5|43 0.5|50 90|210 0|220 0|230 1|280 10|281 90|282 20"},
    {"BODY", "100 AcDbModelerGeometry|70 1"},
    {"INSERT", "100 AcDbBlockReference|2 SITE|10 150|20 40|30 0|41 2|42 2|43 2|50 45"},
    {"ACAD_TABLE", "100 AcDbBlockReference|2 *T1|10 160|20 50|30 0|100 AcDbTable|280 0|342 @tablestyle|343 @tableblock|11 1|21 0|31 0|90 22|91 2|92 2|93 0|94 0|95 0|96 0|141 6|141 4|142 20|142 10|171 1|172 0|173 0|174 0|175 2|176 1|91 0|178 0|145 0|92 0|301 CELL_VALUE|93 6|90 4|1 Parts|94 0|300 |302 Parts|304 ACVALUE_END|171 1|172 0|173 1|174 0|175 1|176 1|91 0|178 0|145 0|92 0|301 CELL_VALUE|93 6|90 4|1 |94 0|300 |302 |304 ACVALUE_END|171 1|172 0|173 0|174 0|175 1|176 1|91 0|178 0|145 0|92 0|301 CELL_VALUE|93 6|90 4|1 Bolt|94 0|300 |302 Bolt|304 ACVALUE_END|171 1|172 0|173 0|174 0|175 1|176 1|91 0|178 0|145 0|92 0|301 CELL_VALUE|93 6|90 4|1 12|94 0|300 |302 12|304 ACVALUE_END"},
};

// A square with a round hole, as a modeller tells it.
constexpr std::string_view region[] = {
    "400 32 1 0",
    "7 Gallery 5 1.0.0 1 0",
    "1 1e-06 1e-10",
    "body $-1 $1 $-1 $-1 #",
    "lump $-1 $-1 $2 $0 #",
    "shell $-1 $-1 $-1 $3 $-1 $1 #",
    "face $-1 $-1 $4 $2 $-1 $5 forward double out #",
    "loop $-1 $6 $7 $3 #",
    "plane-surface $-1 0 0 0 0 0 1 1 0 0 forward_v I I I I #",
    "loop $-1 $-1 $27 $3 #",
    "coedge $-1 $8 $10 $-1 $11 forward $4 $-1 #",
    "coedge $-1 $9 $7 $-1 $12 forward $4 $-1 #",
    "coedge $-1 $10 $8 $-1 $13 forward $4 $-1 #",
    "coedge $-1 $7 $9 $-1 $14 forward $4 $-1 #",
    "edge $-1 $15 $16 $7 $23 forward #",
    "edge $-1 $16 $17 $8 $24 forward #",
    "edge $-1 $17 $18 $9 $25 forward #",
    "edge $-1 $18 $15 $10 $26 forward #",
    "vertex $-1 $11 $19 #",
    "vertex $-1 $12 $20 #",
    "vertex $-1 $13 $21 #",
    "vertex $-1 $14 $22 #",
    "point $-1 140 15 0 #",
    "point $-1 150 15 0 #",
    "point $-1 150 25 0 #",
    "point $-1 140 25 0 #",
    "straight-curve $-1 140 15 0 1 0 0 I I #",
    "straight-curve $-1 150 15 0 0 1 0 I I #",
    "straight-curve $-1 150 25 0 -1 0 0 I I #",
    "straight-curve $-1 140 25 0 0 -1 0 I I #",
    "coedge $-1 $27 $27 $-1 $28 reversed $6 $-1 #",
    "edge $-1 $29 $29 $27 $31 forward #",
    "vertex $-1 $28 $30 #",
    "point $-1 148 20 0 #",
    "ellipse-curve $-1 145 20 0 0 0 1 3 0 0 1 I I #",
};

// A ball.
constexpr std::string_view solid[] = {
    "400 5 1 0",
    "7 Gallery 5 1.0.0 1 0",
    "1 1e-06 1e-10",
    "body $-1 $1 $-1 $-1 #",
    "lump $-1 $-1 $2 $0 #",
    "shell $-1 $-1 $-1 $3 $-1 $1 #",
    "face $-1 $-1 $-1 $2 $-1 $4 forward single #",
    "sphere-surface $-1 210 20 0 5 1 0 0 0 0 1 forward_v I I I I #",
};

// A picture of one dimension stands for those of all. Each is there a second time without a picture.
constexpr Exhibit dimensions[] = {
    {"DIMENSION", "100 AcDbDimension|2 *D1|10 0|20 70|30 0|11 5|21 71|31 0|70 32|71 5|42 10|3 GALLERY|100 AcDbAlignedDimension|13 0|23 60|33 0|14 10|24 65|34 0|50 0|100 AcDbRotatedDimension|1001 ACAD|1000 DSTYLE|1002 {|1070 173|1070 1|1070 343|1005 @dot|1070 344|1005 0|1070 41|1040 4|1070 271|1070 3|1002 }"},
    {"DIMENSION", "100 AcDbDimension|2 *D1|10 20|20 64|30 0|11 22|21 66|31 0|70 33|71 5|42 5|3 GALLERY|100 AcDbAlignedDimension|13 20|23 60|33 0|14 24|24 63|34 0"},
    {"DIMENSION", "100 AcDbDimension|2 *D1|10 40|20 60|30 0|11 43|21 64|31 0|70 36|71 5|42 5|3 GALLERY|100 AcDbRadialDimension|15 43|25 64|35 0|40 0"},
    {"DIMENSION", "100 AcDbDimension|2 *D1|10 50|20 60|30 0|11 53|21 64|31 0|70 35|71 5|42 10|3 GALLERY|100 AcDbDiametricDimension|15 56|25 68|35 0|40 0"},
    {"DIMENSION", "100 AcDbDimension|2 *D1|10 75|20 65|30 0|11 76|21 62|31 0|70 34|71 5|42 0.7853981633974483|3 GALLERY|100 AcDb2LineAngularDimension|13 70|23 60|33 0|14 75|24 60|34 0|15 70|25 60|35 0|16 76|26 62|36 0"},
    {"DIMENSION", "100 AcDbDimension|2 *D1|10 88|20 62|30 0|11 89|21 63|31 0|70 37|71 5|42 1.570796326794897|3 GALLERY|100 AcDb3PointAngularDimension|13 85|23 60|33 0|14 80|24 65|34 0|15 80|25 60|35 0"},
    {"DIMENSION", "100 AcDbDimension|2 *D1|10 100|20 60|30 0|11 107|21 66|31 0|70 102|71 5|42 4|3 GALLERY|100 AcDbOrdinateDimension|13 104|23 63|33 0|14 106|24 66|34 0"},
    {"LARGE_RADIAL_DIMENSION", "100 AcDbDimension|2 *D1|10 110|20 60|30 0|11 118|21 66|31 0|70 169|71 5|42 10|3 GALLERY|100 AcDbRadialDimensionLarge|13 113|23 62|33 0|14 115|24 64|34 0|15 116|25 68|35 0|40 0"},
    {"ARC_DIMENSION", "100 AcDbDimension|2 *D1|10 134|20 64|30 0|11 135|21 65|31 0|70 37|71 5|42 6.283185307179586|3 GALLERY|100 AcDbArcDimension|13 134|23 60|33 0|14 130|24 64|34 0|15 130|25 60|35 0|70 0|40 0|41 0|71 0|16 0|26 0|36 0|17 0|27 0|37 0"},
};
// clang-format on

// --- what the exhibits refer to ---

Names addStyles(DrawingBuilder& drawing) {
  drawing.layer("Exhibits", {.color = 3, .lineWeight = 25});
  drawing.lineType("DASHED", "Dashed __ __ __", {2.5, -1.25});
  drawing.textStyle("Lettering", "arial.ttf");

  BlockBuilder& dot = drawing.block("_Dot");
  dot.circle({0, 0}, 0.25);
  BlockBuilder& part = drawing.block("PART");
  part.circle({0, 0}, 2);
  part.attributeDefinition({.tag = "NUMBER", .value = "1", .at = {0, 3}}, "Number of the part");
  drawing.block("*D1").line({0, 0}, {1, 0});
  BlockBuilder& table = drawing.block("*T1");
  table.line({0, 0}, {30, 0});
  drawing.externalReference("SITE", "site.dxf");

  Names names{{"dot", dot.handle()},
              {"part", part.handle()},
              {"tableblock", table.handle()},
              {"standard", drawing.textStyleHandle("Standard")},
              {"lettering", drawing.textStyleHandle("Lettering")},
              {"byblock", drawing.lineTypeHandle("ByBlock")},
              {"dashed", drawing.lineTypeHandle("DASHED")}};
  drawing.dimensionStyle(
      "GALLERY",
      pairsOf("3 <> mm|40 2|41 2.5|42 0.6|44 1.25|140 2.5|141 2.5|147 0.6|77 1|78 8|171 3|176 1|177 2"
              "|178 3|271 2|272 2|277 2|278 44|340 @lettering|345 @dashed|371 35|372 18",
              names));
  const auto object = [&](std::string_view key, std::string_view dictionary, std::string_view name,
                          std::string_view type, std::string_view pairs) {
    names.emplace(key, drawing.object(dictionary, name, type, pairsOf(pairs, names)));
  };
  object(
      "mlinestyle", "ACAD_MLINESTYLE", "STANDARD", "MLINESTYLE",
      "100 AcDbMlineStyle|2 STANDARD|70 0|3 |62 256|51 90|52 90|71 2|49 0.5|62 256|6 BYLAYER|49 -0.5|62 256"
      "|6 BYLAYER");
  object(
      "mleaderstyle", "ACAD_MLEADERSTYLE", "Plain", "MLEADERSTYLE",
      "100 AcDbMLeaderStyle|179 2|170 2|171 1|172 0|90 2|40 0|41 0|173 1|91 -1056964608|340 @byblock|92 "
      "-2|290 1"
      "|42 2|291 1|43 8|3 Plain|341 0|44 4|300 |342 @standard|174 1|178 1|175 1|176 0|93 -1056964608|45 "
      "4|292 0"
      "|297 0|46 4|343 0|94 -1056964608|47 1|49 1|140 1|293 1|141 0|294 1|177 0|142 1|295 0|296 0|143 3.75");
  object("tablestyle", "ACAD_TABLESTYLE", "Plain", "TABLESTYLE",
         "100 AcDbTableStyle|280 0|3 Plain|70 0|71 0|40 1.5|41 1.5|280 0|281 0");
  object("image", "ACAD_IMAGE_DICT", "Facade", "IMAGEDEF",
         "100 AcDbRasterImageDef|90 0|1 images/facade.png|10 200|20 100|11 0.01|21 0.01|280 1|281 0");
  object("underlay", "ACAD_PDFDEFINITIONS", "survey - 1", "PDFDEFINITION",
         "100 AcDbUnderlayDefinition|1 survey.pdf|2 1");
  return names;
}

// --- entities ---

void addPlainOnes(BlockBuilder& model, const EntityStyle& style) {
  model.line({0, 0}, {10, 5}, style);
  model.point({15, 0}, style);
  model.circle({25, 5}, 5, style);
  model.arc({40, 5}, 5, 30, 120, style);
  model.ellipse({55, 5}, {8, 0}, 0.5, style, 0, 200);
  model.polyline({{70, 0, 0.5, 1, 2}, {80, 0, 0, 2, 1}, {80, 10}}, {.closed = true, .elevation = 2}, style);
  model.text({90, 0}, "Plain", {.height = 3, .rotation = 15, .style = "Lettering"}, style);
  model.mtext({120, 10}, "Two\\Plines", {.height = 2, .width = 30, .rotation = 20}, style);
  model.insert("PART",
               {.at = {150, 5},
                .scaleX = 2,
                .rotation = 30,
                .attributes = {{.tag = "NUMBER", .value = "7", .at = {150, 11}}}},
               style);
}

void addHatches(BlockBuilder& model, const EntityStyle& style) {
  const auto square = [](double left) {
    return Outline{{left, 80}, {left + 10, 80}, {left + 10, 90}, {left, 90}};
  };
  const Outline outlines[] = {square(0), square(15), square(30), square(45)};
  const auto boundary = [&](std::size_t number) { return std::span(&outlines[number], 1); };
  model.patternHatch(
      boundary(0),
      {.name = "ANSI31", .lines = {{.angle = 45, .offset = {0, 3.175}}}, .angle = 10, .scale = 0.5}, style);
  model.solidHatch(boundary(1), style);
  model.gradientHatch(boundary(2), {.name = "CYLINDER", .firstColor = 0xFF0000, .angle = 30}, style);
  const std::vector<RawPair> lines = pairsOf(
      "100 AcDbHatch|10 0|20 0|30 0|210 0|220 0|230 1|2 _USER|70 0|71 0|91 1|92 2|72 0|73 1|93 4|10 45|20 "
      "80|10 55|20 80"
      "|10 55|20 90|10 45|20 90|97 0|75 0|76 0|52 30|41 2|77 0|78 1|53 30|43 0|44 0|45 -1|46 "
      "1.7320508075688772|79 0|98 1"
      "|10 50|20 85",
      {});
  model.raw("HATCH", lines, style);
}

void addModel(BlockBuilder& model, std::string_view type, std::span<const std::string_view> lines,
              const EntityStyle& style) {
  std::vector<RawPair> pairs = pairsOf("100 AcDbModelerGeometry|70 1", {});
  for (const std::string_view line : lines)
    pairs.push_back({1, dxf::encodeModelLine(line)});
  model.raw(type, pairs, style);
}

// A polyline in pieces.
void addSequence(BlockBuilder& model, std::string_view head, std::initializer_list<std::string_view> vertices,
                 const EntityStyle& style) {
  const Handle handle = model.raw("POLYLINE", pairsOf(head, {}), style);
  for (const std::string_view vertex : vertices)
    model.raw("VERTEX", pairsOf(vertex, {}), style, handle);
  model.raw("SEQEND", {}, style, handle);
}

void addPolylines(BlockBuilder& model, const EntityStyle& style) {
  constexpr std::string_view flat = "100 AcDbVertex|100 AcDb2dVertex|30 0|";
  const auto vertex = [&](std::string_view pairs) { return std::string(flat) + std::string(pairs); };
  addSequence(model, "100 AcDb2dPolyline|66 1|10 0|20 0|30 3|70 1|40 0.5|41 0.5",
              {vertex("10 0|20 100|42 1"), vertex("10 10|20 100|40 1|41 2"), vertex("10 10|20 110")}, style);
  addSequence(model, "100 AcDb2dPolyline|66 1|10 0|20 0|30 0|70 2",
              {vertex("10 20|20 100|42 0.2|70 2|50 45"), vertex("10 24|20 106|42 -0.2|70 1"),
               vertex("10 30|20 110|70 2|50 45")},
              style);
  addSequence(model, "100 AcDb2dPolyline|66 1|10 0|20 0|30 0|70 4|75 6",
              {vertex("10 40|20 100|70 16"), vertex("10 45|20 110|70 16"), vertex("10 50|20 100|70 16"),
               vertex("10 40|20 100|70 8"), vertex("10 45|20 105|70 8"), vertex("10 50|20 100|70 8")},
              style);
  constexpr std::string_view space = "100 AcDbVertex|100 AcDb3dPolylineVertex|";
  const auto spatial = [&](std::string_view pairs) { return std::string(space) + std::string(pairs); };
  addSequence(model, "100 AcDb3dPolyline|66 1|10 0|20 0|30 0|70 9",
              {spatial("10 60|20 100|30 0|70 32"), spatial("10 63|20 104|30 0|70 32"),
               spatial("10 63|20 104|30 12|70 32")},
              style);
  addSequence(model, "100 AcDb3dPolyline|66 1|10 0|20 0|30 0|70 12|75 5",
              {spatial("10 70|20 100|30 0|70 48"), spatial("10 75|20 105|30 5|70 48"),
               spatial("10 80|20 100|30 0|70 48"), spatial("10 70|20 100|30 0|70 40"),
               spatial("10 80|20 100|30 0|70 40")},
              style);
  constexpr std::string_view net = "100 AcDbVertex|100 AcDbPolygonMeshVertex|";
  const auto knot = [&](std::string_view pairs) { return std::string(net) + std::string(pairs); };
  addSequence(
      model, "100 AcDbPolygonMesh|66 1|10 0|20 0|30 0|70 48|71 2|72 3",
      {knot("10 90|20 100|30 0|70 64"), knot("10 95|20 100|30 1|70 64"), knot("10 100|20 100|30 0|70 64"),
       knot("10 90|20 105|30 0|70 64"), knot("10 95|20 105|30 1|70 64"), knot("10 100|20 105|30 0|70 64")},
      style);
  addSequence(model, "100 AcDbPolyFaceMesh|66 1|10 0|20 0|30 0|70 64|71 4|72 2",
              {"100 AcDbVertex|100 AcDbPolyFaceMeshVertex|10 110|20 100|30 0|70 192",
               "100 AcDbVertex|100 AcDbPolyFaceMeshVertex|10 120|20 100|30 0|70 192",
               "100 AcDbVertex|100 AcDbPolyFaceMeshVertex|10 120|20 110|30 0|70 192",
               "100 AcDbVertex|100 AcDbPolyFaceMeshVertex|10 110|20 110|30 5|70 192",
               "100 AcDbFaceRecord|10 0|20 0|30 0|70 128|71 1|72 2|73 3",
               "100 AcDbFaceRecord|10 0|20 0|30 0|70 128|71 1|72 3|73 4"},
              style);
}

// Its picture is nobody else's, and looks as the style and the points say.
void addDrawnDimension(DrawingBuilder& drawing, const Names& names, const EntityStyle& style) {
  const EntityStyle line{.layer = style.layer, .color = 1, .lineWeight = 35};
  const EntityStyle extension{.layer = style.layer, .color = 2, .lineWeight = 18};
  BlockBuilder& picture = drawing.block("*D2");
  picture.line({0, 131.2}, {0, 142.5}, extension);
  picture.line({40, 131.2}, {40, 142.5}, extension);
  picture.line({5, 140}, {35, 140}, line);
  picture.raw(
      "SOLID",
      pairsOf("100 AcDbTrace|10 5|20 140.8|30 0|11 5|21 139.2|31 0|12 0|22 140|32 0|13 0|23 140|33 0", {}),
      {.layer = style.layer, .color = 1});
  picture.insert("_Dot", {.at = {40, 140}, .scaleX = 5, .scaleY = 5, .scaleZ = 5}, line);
  picture.mtext({20, 144}, "40 mm", {.height = 5, .attachment = 5}, {.layer = style.layer, .color = 3});
  for (const Point& at : {Point{0, 130}, Point{40, 130}, Point{40, 140}})
    picture.point(at, {.layer = "Defpoints", .color = byBlock});
  drawing.model().raw(
      "DIMENSION",
      pairsOf("100 AcDbDimension|2 *D2|10 40|20 140|30 0|11 20|21 144|31 0|70 32|71 5|42 40|3 GALLERY"
              "|100 AcDbAlignedDimension|13 0|23 130|33 0|14 40|24 130|34 0|50 0|100 AcDbRotatedDimension"
              "|1001 ACAD|1000 DSTYLE|1002 {|1070 173|1070 1|1070 343|1005 0|1070 344|1005 @dot|1002 }",
              names),
      style);
}

// A block without entities is none.
void addDimensionsWithoutPicture(DrawingBuilder& drawing, const Names& names, const EntityStyle& style) {
  constexpr int pictureCode = 2;
  drawing.block("*D3");
  for (const Exhibit& it : dimensions) {
    std::vector<RawPair> pairs = pairsOf(it.pairs, names);
    for (RawPair& pair : pairs) {
      if (pair.code == pictureCode) pair.value = "*D3";
    }
    drawing.model().raw(it.type, pairs, style);
  }
}

void addSheet(DrawingBuilder& drawing) {
  BlockBuilder& sheet = drawing.block("*Paper_Space");
  sheet.raw(
      "VIEWPORT",
      pairsOf("100 AcDbViewport|10 100|20 100|30 0|40 150|41 100|68 2|69 2|12 50|22 50|13 0|23 0|14 10|24 10"
              "|15 10|25 10|16 0|26 0|36 1|17 0|27 0|37 0|42 50|43 0|44 0|45 200|50 0|51 15|72 100|90 "
              "32864|1 plain.ctb"
              "|281 0|71 1|74 0|110 0|120 0|130 0|111 1|121 0|131 0|112 0|122 1|132 0|79 0|146 0|170 0",
              {}));
}

}  // namespace

std::string galleryDrawing() {
  DrawingBuilder drawing;
  const Names names = addStyles(drawing);
  const EntityStyle style{.layer = "Exhibits"};
  BlockBuilder& model = drawing.model();
  addPlainOnes(model, style);
  for (const Exhibit& it : exhibits)
    model.raw(it.type, pairsOf(it.pairs, names), style);
  for (const Exhibit& it : dimensions)
    model.raw(it.type, pairsOf(it.pairs, names), style);
  addModel(model, "REGION", region, style);
  addModel(model, "3DSOLID", solid, style);
  addHatches(model, style);
  addPolylines(model, style);
  model.attributeDefinition({.tag = "MATERIAL", .value = "Steel", .at = {180, 0}}, "What it is made of",
                            style);
  addSheet(drawing);
  addDrawnDimension(drawing, names, style);
  addDimensionsWithoutPicture(drawing, names, style);
  return drawing.bytes();
}

}  // namespace velt::samples
