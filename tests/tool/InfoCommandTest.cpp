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

TEST(InfoCommand, AnEntityWithADictionaryIsTold) {
  const TemporaryFolder folder;
  const auto partOf = [&](int count) {
    std::string entities;
    for (int i = 0; i < 2; ++i) {
      std::string text = line(std::to_string(30 + i), "0");
      if (i < count)
        text.insert(text.find("100\n"), pairs({{102, "{ACAD_XDICTIONARY"}, {360, "A0"}, {102, "}"}}));
      entities += text;
    }
    std::string text = drawingOf({{"0"}}, entities);
    text.insert(text.rfind("0\nEOF"),
                pairs({{0, "SECTION"}, {2, "OBJECTS"}, {0, "DICTIONARY"}, {5, "A0"}, {0, "ENDSEC"}}));
    const std::string file = folder.write("with.dxf", text);
    EXPECT_EQ(nlohmann::json::parse(shown(file, true))["withExtensionDictionary"], count);
    return shown(file);
  };
  EXPECT_THAT(partOf(0), testing::Not(HasSubstr("Data of applications")));
  EXPECT_THAT(partOf(1), HasSubstr("\n\nData of applications\n  (in dictionaries)  1 entity\n"));
  EXPECT_THAT(partOf(2), HasSubstr("\n\nData of applications\n  (in dictionaries)  2 entities\n"));
}

TEST(InfoCommand, ALineWithNothingToSayEndsWithItsName) {
  const TemporaryFolder folder;
  const std::string file = folder.write("odd.dxf", pairs({{0, "SECTION"},
                                                          {2, "HEADER"},
                                                          {9, "$ACADVER"},
                                                          {1, "AC1099"},
                                                          {9, "$LUNITS"},
                                                          {70, "0"},
                                                          {9, "$EXTMIN"},
                                                          {10, "1.25"},
                                                          {20, "-2"},
                                                          {30, "3"},
                                                          {9, "$EXTMAX"},
                                                          {10, "4"},
                                                          {20, "5"},
                                                          {30, "6.5"},
                                                          {0, "ENDSEC"},
                                                          {0, "EOF"}}));
  EXPECT_EQ(shown(file), file
                             + "\n\nDrawing\n"
                               "  Format    AC1099 (AC1099)\n"
                               "  Units     Unitless\n"
                               "  Lengths\n"
                               "  Angles    Decimal degrees\n"
                               "  Extents   1.25, -2, 3 to 4, 5, 6.5\n"
                               "  Entities  0 entities\n");
}

TEST(InfoCommand, ASectionWithoutANameIsToldAllTheSame) {
  const TemporaryFolder folder;
  std::string text = drawingOf({{"0"}}, "");
  text.insert(text.rfind("0\nEOF"), pairs({{0, "SECTION"}, {0, "ENDSEC"}}));
  EXPECT_THAT(shown(folder.write("nameless.dxf", text)),
              testing::EndsWith("\n\nKept as they stand, but not understood\n    section\n"));
}

}  // namespace
}  // namespace velt::tool
