// What the commands print about the drawings that the tool draws itself, whole: whoever reads it with a script of their own
// notices each word that changes.

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
      {"list", "none.dxf"}}},
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
    {"info", {{"info", "plan.dxf"}, {"info", "gallery.dxf"}, {"info", "plan.dxf", "--json"}}},
    {"show",
     {{"show", "gallery.dxf", "--all", "--choices"},
      {"show", "plan.dxf", "--type", "Line", "--values"},
      {"show", "plan.dxf", "--handle", "D0"},
      {"show", "gallery.dxf", "--handle", "43", "--json"},
      {"show", "gallery.dxf", "--type", "Hatch"},
      {"show", "plan.dxf", "gallery.dxf", "--type", "Circle"}}},
    {"table",
     {{"table", "plan.dxf", "--layer", "Doors"},
      {"table", "gallery.dxf", "--all", "--columns", "Layer,Length,Area"},
      {"table", "gallery.dxf", "--type", "Circle,Arc", "--columns", "Radius,Center X", "--csv"},
      {"table", "gallery.dxf", "--type", "Arc", "--columns", "Radius", "--json"},
      {"table", "gallery.dxf", "--type", "Arc,Circle", "--columns", "all", "--csv"},
      {"table", "gallery.dxf", "--type", "Arc", "--columns", "Radus"}}},
    {"explain",
     {{"explain", "plan.dxf", "Length", "--all"},
      {"explain", "plan.dxf", "Radius", "--all"},
      {"explain", "plan.dxf", "Radius", "--all", "--json"},
      {"explain", "plan.dxf", "Layer", "--type", "Line"},
      {"explain", "plan.dxf", "Handle", "--handle", "D0"},
      {"explain", "gallery.dxf", "Nothing", "--all"}}},
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
};

// The command, what it printed, and its exit code; names of files without the folder.
std::string printed(std::vector<const char*> arguments, const std::filesystem::path& folder) {
  std::string text = "$";
  std::vector<std::string> words{"veltprops"};
  for (const char* const argument : arguments) {
    text += std::string(" ") + argument;
    const bool isFile = std::string_view(argument).ends_with(".dxf");
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
  for (const Listed& listing : listings) {
    std::string text;
    for (const std::vector<const char*>& line : listing.lines)
      text += printed(line, place);
    EXPECT_TRUE(tests::matchesGolden(std::string("golden/output/") + listing.name + ".txt", text));
  }
}

}  // namespace
}  // namespace velt::tool
