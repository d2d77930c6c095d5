#include "tool/ConditionCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
  const std::string reference = pairs({{0, "INSERT"},
                                       {5, "34"},
                                       {100, "AcDbEntity"},
                                       {8, "0"},
                                       {100, "AcDbBlockReference"},
                                       {66, "1"},
                                       {2, "Door"},
                                       {10, "0"},
                                       {20, "0"},
                                       {0, "ATTRIB"},
                                       {5, "35"},
                                       {100, "AcDbEntity"},
                                       {8, "0"},
                                       {100, "AcDbText"},
                                       {10, "0"},
                                       {20, "0"},
                                       {40, "1"},
                                       {1, "wide"},
                                       {100, "AcDbAttribute"},
                                       {2, "RADIUS"},
                                       {70, "0"},
                                       {0, "SEQEND"},
                                       {5, "36"}});
  const std::string block = pairs({{0, "BLOCK"}, {5, "50"}, {8, "0"}, {2, "Door"}, {70, "0"}, {0, "ENDBLK"}});
  for (const std::string& entities : {circle("31", "0") + reference, reference + circle("31", "0")}) {
    const auto drawing = Drawing::parse(drawingOf({{"0"}}, entities, block), "house.dxf");
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
  const std::string reference = pairs({{0, "INSERT"},
                                       {5, "40"},
                                       {100, "AcDbEntity"},
                                       {8, "0"},
                                       {66, "1"},
                                       {100, "AcDbBlockReference"},
                                       {2, "Dish"},
                                       {10, "0"},
                                       {20, "0"},
                                       {0, "ATTRIB"},
                                       {5, "41"},
                                       {100, "AcDbEntity"},
                                       {8, "0"},
                                       {100, "AcDbText"},
                                       {1, "big"},
                                       {100, "AcDbAttribute"},
                                       {2, "Radius"},
                                       {0, "SEQEND"},
                                       {5, "42"}});
  const auto drawing = Drawing::parse(drawingOf({{"0"}}, circle("31", "0") + reference), "house.dxf");
  const SelectedEntities selected = select(*drawing, {.where = "Radius = big"});
  ASSERT_EQ(selected.ids.size(), 1U);
  EXPECT_EQ(handleText(selected.ids[0]), "40");
}

TEST(ConditionCheck, NumbersThatDifferHardlyAreTheSame) {
  EXPECT_TRUE(isSameNumber(0.1 + 0.2, 0.3));
  EXPECT_TRUE(isSameNumber(1e12, 1e12 + 1));
  EXPECT_FALSE(isSameNumber(1.0, 1.00001));
}

}  // namespace
}  // namespace velt::tool
