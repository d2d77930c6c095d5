#include "tool/ConditionCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tests/tool/Drawings.h"
#include "tool/EntitySelection.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using velt::database::Drawing;

class Where : public testing::Test {
 protected:
  std::vector<std::string> where(const std::string& condition, bool isInverted = false) {
    std::vector<std::string> handles;
    for (const VkDbObjectId id : select(*drawing_, {.where = condition, .isInverted = isInverted}).ids)
      handles.push_back(handleText(id));
    return handles;
  }
  std::string failureOf(const std::string& condition) {
    try {
      where(condition);
    } catch (const Failure& failure) {
      return failure.what();
    }
    return "";
  }

 private:
  // A line of 8.5 units on Walls, one of 0.5 on Doors, an arc from 0 to 90 degrees and two polylines.
  std::unique_ptr<Drawing> drawing_ =
      Drawing::parse(drawingOf({{"0"}, {"Walls"}, {"Doors"}}, line("2F", "Walls") + line("30", "Doors", 2.0)
                                                                  + circle("31", "Walls")
                                                                  + pairs({{0, "ARC"},
                                                                           {5, "32"},
                                                                           {100, "AcDbEntity"},
                                                                           {8, "0"},
                                                                           {100, "AcDbCircle"},
                                                                           {10, "0"},
                                                                           {20, "0"},
                                                                           {40, "2"},
                                                                           {100, "AcDbArc"},
                                                                           {50, "0"},
                                                                           {51, "90"}})
                                                                  + pairs({{0, "LWPOLYLINE"},
                                                                           {5, "33"},
                                                                           {100, "AcDbEntity"},
                                                                           {8, "0"},
                                                                           {100, "AcDbPolyline"},
                                                                           {90, "2"},
                                                                           {70, "0"},
                                                                           {10, "1"},
                                                                           {20, "2"},
                                                                           {10, "7"},
                                                                           {20, "8"}})),
                     "house.dxf");
};

TEST_F(Where, NumbersAreComparedAsNumbers) {
  EXPECT_THAT(where("Length > 5"), ElementsAre("2F", "33"));
  EXPECT_THAT(where("Length = 0.5"), ElementsAre("30"));
  EXPECT_THAT(where("Radius >= 2 and Radius < 2.5"), ElementsAre("32"));
}

TEST_F(Where, AnglesAreWrittenInDegrees) {
  EXPECT_THAT(where("End angle = 90"), ElementsAre("32"));
  EXPECT_THAT(where("End angle = 90\u00B0"), ElementsAre("32"));
}

TEST_F(Where, TextsAreComparedByWhatIsShownInAnyCase) {
  EXPECT_THAT(where("Layer = walls"), ElementsAre("2F", "31"));
  EXPECT_THAT(where("Layer like '?OO*'"), ElementsAre("30"));
  EXPECT_THAT(where("Color = ByLayer and Layer = 0"), ElementsAre("32", "33"));
  EXPECT_THAT(where("Lineweight = ByLayer and Layer < Walls and Layer > 1"), ElementsAre("30"));
}

TEST_F(Where, YesAndNoAreCompared) {
  EXPECT_THAT(where("Closed = no"), ElementsAre("33"));
}

TEST_F(Where, AnEntityWithoutThePropertyFitsNoComparison) {
  EXPECT_THAT(where("Radius != 2"), ElementsAre("31"));
  EXPECT_THAT(where("not Radius = 2"), ElementsAre("2F", "30", "31", "33"));
  EXPECT_THAT(where("has Radius"), ElementsAre("31", "32"));
  EXPECT_THAT(where("has NUMBER"), IsEmpty()) << "also for one that no entity has";
}

TEST_F(Where, OneOfSeveralRowsOfANameIsEnough) {
  EXPECT_THAT(where("Vertex X = 7"), ElementsAre("33"));
  EXPECT_THAT(where("Vertex X#1 = 7"), IsEmpty());
  EXPECT_THAT(where("Vertex X#2 = 7"), ElementsAre("33"));
}

TEST(WhereOfTwoKinds, AValueThatOnlySomePropertiesOfANameUnderstandIsNoMistake) {
  // An attribute is a text, what a circle has under the same name a number.
  const std::string door = reference(0x34, "Door", "RADIUS", "wide");
  for (const std::string& entities : {circle("31", "0") + door, door + circle("31", "0")}) {
    const auto drawing = Drawing::parse(drawingOf({{"0"}}, entities, emptyBlock("Door")), "house.dxf");
    const auto fitting = select(*drawing, {.where = "Radius = wide"}).ids;
    ASSERT_EQ(fitting.size(), 1U);
    EXPECT_EQ(handleText(fitting.front()), "34");
    EXPECT_THROW(select(*drawing, {.types = {"Circle"}, .where = "Radius = wide"}), Failure);
    EXPECT_EQ(select(*drawing, {.where = "Radius = 2.5"}).ids.size(), 1U);
  }
}

TEST_F(Where, FactsOfTheEntityStandBesideItsProperties) {
  EXPECT_THAT(where("@class = Line and @layer = Walls"), ElementsAre("2F"));
  EXPECT_THAT(where("@type in (ARC, LWPOLYLINE)"), ElementsAre("32", "33"));
  EXPECT_THAT(where("@layout = Model and @handle = 2f"), ElementsAre("2F"));
}

TEST_F(Where, NotTurnsTheWholeSelectionRound) {
  EXPECT_THAT(where("Radius > 0", true), ElementsAre("2F", "30", "33"));
}

TEST_F(Where, APropertyThatNoEntityHasIsNamedWithTheOnesLikeIt) {
  EXPECT_EQ(failureOf("Raduis > 5"), "--where: no entity has a property Raduis; did you mean Radius?");
  EXPECT_THAT(failureOf("Layer = 0 or Frobs > 5"), HasSubstr("no entity has a property Frobs"))
      << "wherever it stands";
}

TEST_F(Where, AValueThatMeansNothingToThePropertyIsAFailure) {
  EXPECT_THAT(failureOf("Radius > big"), HasSubstr("--where: Radius: \"big\" is not a number"));
}

TEST(ConditionCheck, AValueThatMeansSomethingToOneOfThePropertiesIsNoFailure) {
  const auto drawing = Drawing::parse(
      drawingOf({{"0"}}, circle("31", "0") + reference(0x40, "Dish", "Radius", "big")), "house.dxf");
  const SelectedEntities selected = select(*drawing, {.where = "Radius = big"});
  ASSERT_EQ(selected.ids.size(), 1U);
  EXPECT_EQ(handleText(selected.ids[0]), "40");
}

TEST_F(Where, WhatIsAtTheLimitIsPartOfItWhereTheSignSaysSo) {
  EXPECT_THAT(where("Radius <= 2"), ElementsAre("32"));
  EXPECT_THAT(where("Radius < 2.5"), ElementsAre("32"));
  EXPECT_THAT(where("Radius > 2"), ElementsAre("31"));
  EXPECT_THAT(where("Radius >= 2.5"), ElementsAre("31"));
  EXPECT_THAT(where("Layer <= Doors and @class = Line"), ElementsAre("30"));
  EXPECT_THAT(where("Layer >= Walls and @class = Line"), ElementsAre("2F"));
}

TEST_F(Where, NoIsLessThanYes) {
  EXPECT_THAT(where("Closed = yes"), IsEmpty());
  EXPECT_THAT(where("Closed != yes"), ElementsAre("33"));
  EXPECT_THAT(where("Closed < yes"), ElementsAre("33"));
  EXPECT_THAT(where("Closed >= yes"), IsEmpty());
}

TEST_F(Where, APatternIsThatOfTheNumberAsItIsShown) {
  EXPECT_THAT(where("Radius like '2.5*'"), ElementsAre("31"));
  EXPECT_THAT(where("Radius not like '2.5*' and has Radius"), ElementsAre("32"));
}

TEST_F(Where, EveryEntityHasEveryFact) {
  EXPECT_THAT(where("has @layer"), ElementsAre("2F", "30", "31", "32", "33"));
  EXPECT_THAT(where("has @block and not has @type"), IsEmpty());
}

TEST_F(Where, SeveralPartsAreJoined) {
  EXPECT_THAT(where("Radius > 1 and Radius < 9 and Layer = Walls"), ElementsAre("31"));
  EXPECT_THAT(where("Radius = 2 or Length = 0.5 or @handle = 2F"), ElementsAre("2F", "30", "32"));
}

TEST_F(Where, ANumberThatIsNoChoiceIsAFailure) {
  EXPECT_THAT(failureOf("Lineweight = 3.7"),
              testing::StartsWith(
                  "--where: Lineweight: \"3.7\" is not one of its choices: ByLayer, ByBlock, Default,"));
}

class WhereOfAttributes : public testing::Test {
 protected:
  std::vector<std::string> where(const std::string& condition) {
    std::vector<std::string> handles;
    for (const VkDbObjectId id : select(*drawing_, {.where = condition}).ids)
      handles.push_back(handleText(id));
    return handles;
  }

 private:
  std::unique_ptr<Drawing> drawing_ = Drawing::parse(
      drawingOf({{"0"}},
                reference(0x40, "Door", "NUMBER", "10") + reference(0x50, "Door", "NUMBER", "05")
                    + reference(0x60, "Door", "NUMBER", "12abc"),
                pairs({{0, "BLOCK"}, {5, "1F"}, {8, "0"}, {2, "Door"}, {70, "0"}, {0, "ENDBLK"}})),
      "house.dxf");
};

TEST_F(WhereOfAttributes, TextsThatAreNumbersAreOrderedAsNumbers) {
  EXPECT_THAT(where("NUMBER > 9"), ElementsAre("40")) << "12abc stands before 9 as a text";
  EXPECT_THAT(where("NUMBER < 9"), ElementsAre("50", "60"));
  EXPECT_THAT(where("NUMBER <= 10"), ElementsAre("40", "50"));
}

TEST_F(WhereOfAttributes, TextsAreEqualOnlyWhenTheyAreWrittenAlike) {
  EXPECT_THAT(where("NUMBER = 5"), IsEmpty());
  EXPECT_THAT(where("NUMBER != 5"), ElementsAre("40", "50", "60"));
  EXPECT_THAT(where("NUMBER = 05"), ElementsAre("50"));
}

TEST_F(WhereOfAttributes, AWholeNumberIsComparedWithAnyOther) {
  EXPECT_THAT(where("Columns > 0.5"), ElementsAre("40", "50", "60"));
  EXPECT_THAT(where("Columns < 1.5 and NUMBER = 10"), ElementsAre("40"));
  EXPECT_THAT(where("Columns = 1.5"), IsEmpty());
}

TEST(ConditionCheck, NumbersThatDifferHardlyAreTheSame) {
  EXPECT_TRUE(isSameNumber(0.1 + 0.2, 0.3));
  EXPECT_TRUE(isSameNumber(1e12, 1e12 + 1));
  EXPECT_FALSE(isSameNumber(1.0, 1.00001));
  EXPECT_FALSE(isSameNumber(1.0, -1.0));
  EXPECT_TRUE(isSameNumber(0.0, 0.5e-9));
  EXPECT_TRUE(isSameNumber(1e-9, 0.0)) << "exactly at the limit";
  EXPECT_FALSE(isSameNumber(0.0, 1.5e-9));
  EXPECT_TRUE(isSameNumber(-1000.0, -1000.0 - 0.5e-6));
  EXPECT_FALSE(isSameNumber(-1000.0, -1000.0 - 1.5e-6));
}

TEST(WhereOfNothing, ANumberThatAnEntityHasNotFitsNoComparison) {
  const auto widening = [](const char* handle, const char* width) {
    return pairs({{0, "LWPOLYLINE"},
                  {5, handle},
                  {100, "AcDbEntity"},
                  {8, "0"},
                  {100, "AcDbPolyline"},
                  {90, "2"},
                  {70, "0"},
                  {10, "1"},
                  {20, "2"},
                  {40, "1"},
                  {41, width},
                  {10, "7"},
                  {20, "8"},
                  {40, "1"},
                  {41, "1"}});
  };
  const auto drawing =
      Drawing::parse(drawingOf({{"0"}}, widening("2F", "1") + widening("30", "3")), "widths");
  const auto where = [&](const std::string& condition) {
    std::vector<std::string> handles;
    for (const VkDbObjectId id : select(*drawing, {.where = condition}).ids)
      handles.push_back(handleText(id));
    return handles;
  };
  EXPECT_THAT(where("Global width >= 1"), ElementsAre("2F")) << "the widths of the other one vary";
  EXPECT_THAT(where("Global width != 5"), ElementsAre("2F"));
  EXPECT_THAT(where("Global width <= 5"), ElementsAre("2F"));
  EXPECT_THAT(where("Global width like '*'"), ElementsAre("2F"));
  EXPECT_THAT(where("not Global width < 5"), ElementsAre("30"));
}

}  // namespace
}  // namespace velt::tool
