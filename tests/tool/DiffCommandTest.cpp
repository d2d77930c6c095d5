#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/support/WholeDrawings.h"
#include "tests/tool/Drawings.h"
#include "tool/Commands.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class DiffCommand : public testing::Test {
 protected:
  std::string between(const std::string& entities, const std::string& others, SelectionRequest selection = {},
                      bool json = false) {
    const std::string file = folder_.write("a.dxf", drawingOf({{"0"}, {"Walls"}}, entities));
    const std::string other = folder_.write("b.dxf", drawingOf({{"0"}, {"Walls"}, {"Doors"}}, others));
    std::ostringstream out;
    isDifferent_ =
        diff({.drawing = file, .other = other, .selection = std::move(selection), .json = json}, out);
    return out.str();
  }
  bool isDifferent() const { return isDifferent_; }

 private:
  TemporaryFolder folder_;
  bool isDifferent_ = false;
};

TEST_F(DiffCommand, EqualEntitiesAreNoDifference) {
  EXPECT_THAT(between(line("2F", "0"), line("2F", "0")), StartsWith("1 entity the same, 0 changed"));
  EXPECT_FALSE(isDifferent());
}

TEST_F(DiffCommand, APropertyThatDiffersIsNamedWithBothValues) {
  const std::string text =
      between(line("2F", "0") + line("30", "0"), line("2F", "Doors", 12.0) + line("30", "0"));
  EXPECT_THAT(text, HasSubstr("2F Line\n  Layer: 0 -> Doors\n"));
  EXPECT_THAT(text, HasSubstr("\n  End X: 10.000 -> 12.000\n"));
  EXPECT_THAT(text, HasSubstr("\n\n1 entity the same, 1 changed"));
  EXPECT_TRUE(isDifferent());
}

TEST_F(DiffCommand, WhatRoundingHidesIsShownWithAllDigits) {
  EXPECT_THAT(between(line("2F", "0", 10.0), line("2F", "0", 10.0001)),
              HasSubstr("\n  End X: 10 -> 10.0001\n"));
}

TEST_F(DiffCommand, EntitiesThatOnlyOneHasAreListed) {
  const std::string text = between(line("2F", "0"), circle("30", "Doors"));
  EXPECT_THAT(text, HasSubstr("- 2F Line on 0: only in "));
  EXPECT_THAT(text, HasSubstr("+ 30 Circle on Doors: only in "));
  EXPECT_TRUE(isDifferent());
}

TEST_F(DiffCommand, APropertyThatOnlyOneHasIsADifference) {
  const std::string text = between(line("2F", "0"), circle("2F", "0"));
  EXPECT_THAT(text, HasSubstr("\n  Start X: 1.500 -> (none)\n"));
  EXPECT_THAT(text, HasSubstr("\n  Radius: (none) -> 2.500\n"));
}

TEST_F(DiffCommand, ASelectionInEitherDrawingLimitsTheComparison) {
  const std::string entities = line("2F", "Walls") + line("30", "0");
  EXPECT_THAT(between(entities, line("2F", "Doors") + line("30", "Walls"), {.layers = {"Doors"}}),
              HasSubstr("0 entities the same, 1 changed"))
      << "also of a layer that only one of them has, and of an entity that moved away";
  EXPECT_THROW(between(entities, entities, {.layers = {"Roof"}}), Failure);
}

TEST_F(DiffCommand, OfSeveralEntitiesWithOneHandleEachIsComparedWithItsOwn) {
  const std::string text = between(line("2F", "0") + circle("2F", "0") + line("2F", "Walls"),
                                   line("2F", "0") + circle("2F", "Walls") + line("30", "Walls"));
  EXPECT_THAT(text, HasSubstr("2F Circle\n  Layer: 0 -> Walls\n"));
  EXPECT_THAT(text, HasSubstr("- 2F Line on Walls: only in "));
  EXPECT_THAT(text, HasSubstr("1 entity the same, 1 changed, 1 only in "));
  EXPECT_THAT(between(line("2F", "0") + circle("2F", "Walls"), line("2F", "Doors") + circle("2F", "Walls"),
                      {.layers = {"Walls"}}),
              HasSubstr("1 entity the same, 0 changed"))
      << "the line is not selected, whose handle is the same";
}

TEST_F(DiffCommand, JsonHasTheValuesOfBothSides) {
  const auto json = nlohmann::json::parse(
      between(line("2F", "0") + line("31", "0"), line("2F", "Walls") + line("30", "0"), {}, true));
  EXPECT_EQ(json["changed"][0]["handle"], "2F");
  EXPECT_EQ(json["changed"][0]["properties"][0],
            (nlohmann::json{{"name", "Layer"},
                            {"drawing", {{"value", "0"}, {"text", "0"}}},
                            {"other", {{"value", "Walls"}, {"text", "Walls"}}}}));
  EXPECT_EQ(json["onlyInDrawing"][0]["handle"], "31");
  EXPECT_EQ(json["onlyInOther"][0]["handle"], "30");
}

TEST(Diff, NoWholeDrawingDiffersFromItself) {
  const TemporaryFolder folder;
  forEachDrawing([&](const WholeDrawing& whole) {
    const std::string file = folder.write(whole.name, whole.bytes);
    std::ostringstream out;
    EXPECT_FALSE(diff({.drawing = file, .other = file}, out)) << out.str();
  });
}

TEST_F(DiffCommand, RowsOfOneNameAreNumbered) {
  EXPECT_THAT(between(polyline("2F", "9"), polyline("2F", "8")),
              StartsWith("2F LWPolyline\n  Vertex X#2: 9.000 -> 8.000\n  Length: 8.000 -> 7.000\n\n"));
}

TEST_F(DiffCommand, WhatOnlyTheFirstHasStandsBeforeWhatOnlyTheSecondHas) {
  EXPECT_THAT(between(line("2F", "0"), circle("2F", "0")), StartsWith("2F Line\n"
                                                                      "  Start X: 1.500 -> (none)\n"
                                                                      "  Start Y: 2.000 -> (none)\n"
                                                                      "  Start Z: 0.000 -> (none)\n"
                                                                      "  End X: 10.000 -> (none)\n"
                                                                      "  End Y: 2.000 -> (none)\n"
                                                                      "  End Z: 0.000 -> (none)\n"
                                                                      "  Delta X: 8.500 -> (none)\n"
                                                                      "  Delta Y: 0.000 -> (none)\n"
                                                                      "  Delta Z: 0.000 -> (none)\n"
                                                                      "  Length: 8.500 -> (none)\n"
                                                                      "  Angle: 0.0\u00B0 -> (none)\n"
                                                                      "  Name: Line -> Circle\n"
                                                                      "  Center X: (none) -> 0.000\n"));
}

TEST_F(DiffCommand, AfterAnEntityThatIsLeftOutOrMissingTheOthersAreCompared) {
  const std::string before =
      circle("2E", "0") + line("2F", "Walls") + line("30", "Walls") + circle("31", "0");
  const std::string after = circle("2E", "0") + line("30", "Walls", 12.0) + circle("31", "Walls")
                            + line("32", "Walls") + line("33", "0") + line("34", "Walls");
  const std::string text = between(before, after, {.types = {"Line"}});
  EXPECT_THAT(text, StartsWith("30 Line\n  End X: 10.000 -> 12.000\n"));
  EXPECT_THAT(text, testing::ContainsRegex("\n- 2F Line on Walls: only in [^\n]*a\\.dxf\n"
                                           "\\+ 32 Line on Walls: only in [^\n]*b\\.dxf\n"
                                           "\\+ 33 Line on 0: only in [^\n]*b\\.dxf\n"
                                           "\\+ 34 Line on Walls: only in [^\n]*b\\.dxf\n"
                                           "\n0 entities the same, 1 changed, 1 only in "));
}

TEST_F(DiffCommand, ANameThatOneDrawingKnowsIsEnoughWhicheverItIs) {
  const std::string entities = line("2F", "0") + line("30", "0");
  EXPECT_THAT(between(entities, line("2F", "Doors") + line("30", "0"), {.layers = {"Doors"}}),
              StartsWith("2F Line\n  Layer: 0 -> Doors\n\n0 entities the same, 1 changed"));
  EXPECT_TRUE(isDifferent());
}

TEST_F(DiffCommand, AnEmptyTextIsToldFromOneThatIsMissing) {
  EXPECT_THAT(between(textEntity("2F", ""), textEntity("2F", "Hall")),
              StartsWith("2F Text\n  Contents: (empty) -> Hall\n\n0 entities the same, 1 changed"));
}

}  // namespace
}  // namespace velt::tool
