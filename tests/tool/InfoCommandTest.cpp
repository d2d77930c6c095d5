#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "samples/FloorPlan.h"
#include "tests/support/WholeDrawings.h"
#include "tests/tool/Drawings.h"
#include "tool/Commands.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::HasSubstr;
using testing::StartsWith;

std::string shown(const std::string& file, bool json = false) {
  std::ostringstream out;
  info({.drawing = file, .json = json}, out);
  return out.str();
}

TEST(InfoCommand, TellsOfTheDrawingUnderHeadings) {
  const TemporaryFolder folder;
  const std::string file = folder.write("plan.dxf", velt::samples::sampleFloorPlan());
  const std::string text = shown(file);
  EXPECT_THAT(text, StartsWith(file + "\n\nDrawing\n  Format     DXF 2013 (AC1027)\n"));
  EXPECT_THAT(text, HasSubstr("\n  Units      Millimeters\n"));
  EXPECT_THAT(text, HasSubstr("\n  Axes          Yellow, CENTER, 18 entities (locked)\n"));
  EXPECT_THAT(text, HasSubstr("\n  Circle (CIRCLE)               20 entities, 13 in blocks\n"));
  EXPECT_THAT(text, HasSubstr("\n  DOOR              4 entities, 6 references\n"));
}

TEST(InfoCommand, SaysWhatIsNotUnderstood) {
  const TemporaryFolder folder;
  const std::string file = folder.write(
      "new.dxf", drawingOf({{"0"}}, pairs({{0, "SPACESHIP"}, {5, "33"}, {100, "AcDbEntity"}, {8, "Space"}})));
  EXPECT_THAT(shown(file), HasSubstr("\nKept as they stand, but not understood\n"
                                     "  SPACESHIP  1 entity: no properties but those of every entity\n"));
  EXPECT_THAT(shown(file), HasSubstr("\n  Space  White, Continuous, 1 entity (only named by entities)\n"));
}

TEST(InfoCommand, JsonCountsAlikeOfWholeDrawings) {
  const TemporaryFolder folder;
  forEachDrawing([&](const WholeDrawing& whole) {
    const auto json = nlohmann::json::parse(shown(folder.write(whole.name, whole.bytes), true));
    for (const char* const part : {"layers", "classes"}) {
      std::size_t count = 0;
      std::size_t inBlocks = 0;
      for (const auto& one : json[part]) {
        count += one["entities"]["count"].get<std::size_t>();
        inBlocks += one["entities"]["inBlocks"].get<std::size_t>();
      }
      EXPECT_EQ(count, json["entities"]["count"]) << part;
      EXPECT_EQ(inBlocks, json["entities"]["inBlocks"]) << part;
    }
    std::size_t onLayouts = 0;
    for (const auto& layout : json["layouts"])
      onLayouts += layout["entities"].get<std::size_t>();
    EXPECT_EQ(onLayouts, json["entities"]["count"]);
  });
}

}  // namespace
}  // namespace velt::tool
