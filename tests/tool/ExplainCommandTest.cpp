#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "samples/FloorPlan.h"
#include "samples/Gallery.h"
#include "tests/tool/Drawings.h"
#include "tool/Commands.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::HasSubstr;
using Json = nlohmann::json;

class ExplainCommand : public testing::Test {
 protected:
  std::string explained(const std::string& entities, const std::string& name, bool json = false,
                        SelectionRequest selection = {.all = true}) const {
    return of(drawingOf({{"0"}, {"Walls", 1, 4}}, entities), name, json, std::move(selection));
  }
  Json cause(const std::string& entities, const std::string& name) const {
    return Json::parse(explained(entities, name, true));
  }
  std::string of(const std::string& drawing, const std::string& name, bool json = false,
                 SelectionRequest selection = {.all = true}) const {
    const std::string file = folder_.write("house.dxf", drawing);
    std::ostringstream out;
    explain({.drawing = file, .name = name, .selection = std::move(selection), .json = json}, out);
    return out.str();
  }

 private:
  TemporaryFolder folder_;
};

TEST_F(ExplainCommand, OfManyValuesTheFirstAreListedAndTheOthersCounted) {
  const auto explainedLines = [&](int count) {
    std::string entities;
    for (int i = 0; i < count; ++i)
      entities += line(std::to_string(20 + i), "0", 10.0 + i);
    return explained(entities, "End X");
  };
  const std::string twenty = explainedLines(20);
  EXPECT_THAT(twenty, HasSubstr("29.000"));
  EXPECT_THAT(twenty, testing::Not(HasSubstr("other values")));
  const std::string some = explainedLines(23);
  EXPECT_THAT(some, HasSubstr("    and 3 other values\n"));
  EXPECT_THAT(some, testing::Not(HasSubstr("30.000")));
}

TEST_F(ExplainCommand, ARowThatIsThereIsShownWithItsValue) {
  EXPECT_EQ(cause(line("2F", "0"), "Layer")["cause"], "shown");
  EXPECT_THAT(explained(line("2F", "0"), "Layer"),
              HasSubstr("  It is shown, with the value 0.\n  It can be edited.\n"));
}

TEST_F(ExplainCommand, AVaryingRowHasItsValuesWithTheWayToSelectThem) {
  const std::string entities = line("2F", "0") + line("30", "0", 20.0);
  EXPECT_EQ(cause(entities, "End X")["cause"], "varying");
  EXPECT_EQ(cause(entities, "End X")["values"].size(), 2U);
  EXPECT_THAT(explained(entities, "End X"),
              HasSubstr("  It is shown, with 2 different values.\n  It can be edited.\n"
                        "    1 of them  10.000  --where \"'End X'=10\"\n"));
}

TEST_F(ExplainCommand, AReadOnlyRowSaysWhy) {
  EXPECT_EQ(cause(line("2F", "0"), "Handle")["cause"], "readOnly");
  EXPECT_THAT(explained(line("2F", "0"), "Handle"), HasSubstr("  It cannot be edited: "));
}

TEST_F(ExplainCommand, EntitiesOnLockedLayersAreNamed) {
  const Json json = cause(line("2F", "0") + line("30", "Walls"), "Thickness");
  EXPECT_EQ(json["entities"], Json{"30"});
  EXPECT_THAT(explained(line("2F", "0") + line("30", "Walls"), "Thickness"),
              HasSubstr("  On locked layers, and so left as they are: 1 of 2 entities: 30.\n  To do: "));
}

TEST_F(ExplainCommand, APropertyOfOtherClassesNamesTheClasses) {
  const Json json = cause(line("2F", "0"), "Radius");
  EXPECT_EQ(json["cause"], "unknown");
  EXPECT_THAT(json["said"].dump(), HasSubstr("Circle"));
  EXPECT_THAT(json["advice"].dump(), HasSubstr("--type "));
  EXPECT_THAT(cause(line("2F", "0"), "Center X")["said"].dump(), HasSubstr("Circle"))
      << "an element of a point";
}

TEST_F(ExplainCommand, ANameThatNothingHasIsAnsweredWithThoseLikeIt) {
  EXPECT_THAT(explained(line("2F", "0"), "Raduis"), HasSubstr("  To do: perhaps Radius is meant\n"));
}

TEST_F(ExplainCommand, WhatOnlySomeHaveSaysHowManyAndHowToSelectThem) {
  const std::string entities = line("2F", "0") + circle("30", "0") + circle("31", "0");
  const Json json = cause(entities, "Radius");
  EXPECT_EQ(json["cause"], "notCommon");
  EXPECT_EQ(json["entities"], Json{"2F"});
  EXPECT_THAT(explained(entities, "Radius"),
              HasSubstr("  2 of the 3 entities have it. Those without it: 2F.\n"));
  EXPECT_THAT(explained(entities, "Radius"),
              HasSubstr("  To do: select only those that have it: --where \"has Radius\"\n"));
}

TEST_F(ExplainCommand, VerticesAreShownOneEntityAtATime) {
  EXPECT_EQ(cause(polyline("2F") + polyline("30"), "Vertex X")["cause"], "oneAtATime");
}

TEST_F(ExplainCommand, DynamicRowsAreWithheldFromSeveral) {
  const std::string data = pairs({{1001, "PARTS"}, {1000, "Oak"}});
  const std::string name = "PARTS 1";
  EXPECT_EQ(cause(line("2F", "0") + data, name)["cause"], "shown");
  EXPECT_EQ(cause(line("2F", "0") + data + line("30", "0") + data, name)["cause"], "dynamicWithheld");
}

TEST_F(ExplainCommand, APropertyThatAKindOfTheClassDoesNotShowIsToldFromOneThatItLacks) {
  const std::string gallery = velt::samples::galleryDrawing();
  const auto causeIn = [&](SelectionRequest selection) {
    return Json::parse(of(gallery, "Scale", true, std::move(selection)))["cause"];
  };
  EXPECT_EQ(causeIn({.where = "@class = Hatch and Pattern name = SOLID"}), "notShown");
  EXPECT_EQ(causeIn({.types = {"Hatch"}}), "notCommon");
}

TEST_F(ExplainCommand, WithoutEntitiesThereIsNothingToExplain) {
  EXPECT_THROW(explained(line("2F", "0"), "Layer", false, {.types = {"Hatch"}}), Failure);
  EXPECT_THROW(explained(line("2F", "0"), "Layer", false, {}), UsageFailure);
}

TEST_F(ExplainCommand, TwentyOneValuesAreOneTooMany) {
  std::string entities;
  for (int i = 0; i < 21; ++i)
    entities += line(std::to_string(20 + i), "0", 10.0 + i);
  EXPECT_THAT(explained(entities, "End X"),
              testing::EndsWith("    1 of them  29.000  --where \"'End X'=29\"\n    and 1 other values\n"));
}

TEST_F(ExplainCommand, WhatAKindOfTheClassDoesNotShowSaysHowToFindThoseThatDo) {
  const std::string text = of(velt::samples::galleryDrawing(), "Scale", false,
                              {.where = "@class = Hatch and Pattern name = SOLID"});
  EXPECT_THAT(text,
              testing::EndsWith("\n  The class has such a property, and does not show it for entities of "
                                "this kind: another kind of the class has it, or it means nothing here.\n"
                                "  To do: find entities that show it: --all --where \"has Scale\"\n"));
}

TEST_F(ExplainCommand, OneEntityThatHasItIsToldInTheSingular) {
  EXPECT_THAT(explained(line("2F", "0") + circle("30", "0"), "Radius"),
              HasSubstr("\n  1 of the 2 entities has it. Those without it: 2F.\n"));
}

TEST_F(ExplainCommand, EightEntitiesAreNamedAndTheOthersCounted) {
  const auto without = [&](int count) {
    std::string entities = circle("90", "0");
    for (int i = 0; i < count; ++i)
      entities += line(std::to_string(20 + i), "0");
    return explained(entities, "Radius");
  };
  EXPECT_THAT(without(8), HasSubstr("Those without it: 20, 21, 22, 23, 24, 25, 26, 27.\n"));
  EXPECT_THAT(without(9), HasSubstr("Those without it: 20, 21, 22, 23, 24, 25, 26, 27 and 1 more.\n"));
}

}  // namespace
}  // namespace velt::tool
