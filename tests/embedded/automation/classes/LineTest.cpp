#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <stdexcept>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;

class LineTest : public ::testing::Test {
 protected:
  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .entity("LINE", {{100, "AcDbLine"}, {39, "2.5"}, {10, "1"}, {20, "2"}, {30, "3"}, {11, "4"}, {21, "-2"}, {31, "15"},
                       {210, "0"}, {220, "0"}, {230, "-1"}})
      .entity("LINE", {{10, "1"}, {20, "1"}, {11, "1"}, {21, "1"}})
      .open();
  // clang-format on
};

TEST_F(LineTest, EndsAreWhereTheyAreStored) {
  const Bound line(*drawing, 0);
  EXPECT_EQ((Numbers{1, 2, 3}), line.numbers(L"StartPoint"));
  EXPECT_EQ((Numbers{4, -2, 15}), line.numbers(L"EndPoint")) << "the normal has no say in a line's ends";
  EXPECT_EQ(2.5, line.real(L"Thickness"));
  EXPECT_EQ((Numbers{0, 0, -1}), line.numbers(L"Normal"));
}

TEST_F(LineTest, CoordinatesAskedForInAnyOrderAreThoseOfTheirPointAndLine) {
  const Bound line(*drawing, 0);
  const Bound other(*drawing, 1);
  EXPECT_EQ(2, line.element(L"StartPoint", 1));
  EXPECT_EQ(-2, line.element(L"EndPoint", 1));
  EXPECT_EQ(1, other.element(L"EndPoint", 1));
  EXPECT_EQ(15, line.element(L"EndPoint", 2));
  EXPECT_EQ(3, line.element(L"StartPoint", 2));
  EXPECT_EQ(S_OK, line.putElement(L"StartPoint", 2, 7));
  EXPECT_EQ(7, line.element(L"StartPoint", 2));
  EXPECT_EQ(2, line.element(L"StartPoint", 1));
}

TEST_F(LineTest, DeltaLengthAndAngleFollowFromTheEnds) {
  const Bound line(*drawing, 0);
  EXPECT_EQ((Numbers{3, -4, 12}), line.numbers(L"Delta"));
  EXPECT_EQ(13, line.real(L"Length"));
  EXPECT_NEAR(2 * pi - std::atan2(4, 3), line.real(L"Angle"), 1e-15);
}

// An object keeps the points that it read, until something is edited, through whichever object that is.
TEST_F(LineTest, WhatWasReadIsReadAgainAfterAnEdit) {
  const Bound line(*drawing, 0);
  const Bound same(*drawing, 0);
  const Bound other(*drawing, 1);
  EXPECT_EQ(13, line.real(L"Length"));
  EXPECT_EQ(13, same.real(L"Length"));

  EXPECT_EQ(S_OK, same.putElement(L"EndPoint", 0, 1));
  EXPECT_EQ((Numbers{0, -4, 12}), line.numbers(L"Delta"));
  EXPECT_EQ(1, line.element(L"EndPoint", 0));
  EXPECT_EQ(std::sqrt(160.0), same.real(L"Length"));
  EXPECT_EQ(0, other.real(L"Length"));

  EXPECT_EQ(S_OK, other.putElement(L"EndPoint", 0, 3));
  EXPECT_EQ(2, other.real(L"Length"));
  EXPECT_EQ((Numbers{0, -4, 12}), line.numbers(L"Delta"));
}

TEST_F(LineTest, WhatWasReadWithinChangesThatAreUndoneIsForgotten) {
  const Bound line(*drawing, 0);
  EXPECT_EQ(13, line.real(L"Length"));
  EXPECT_THROW(drawing->atomically([&] {
    EXPECT_EQ(S_OK, line.putElement(L"EndPoint", 0, 1));
    EXPECT_EQ((Numbers{0, -4, 12}), line.numbers(L"Delta"));
    throw std::runtime_error("undone");
  }),
               std::runtime_error);
  EXPECT_EQ((Numbers{3, -4, 12}), line.numbers(L"Delta"));
  EXPECT_EQ(S_OK, line.putElement(L"EndPoint", 1, 2));
  EXPECT_EQ((Numbers{3, 0, 12}), line.numbers(L"Delta"));
}

TEST_F(LineTest, AnObjectThatIsBoundToAnotherLineTellsThatOnes) {
  const Bound line(*drawing, 0);
  EXPECT_EQ(13, line.real(L"Length"));
  VkDbObjectId other = drawing->entities()[1];
  EXPECT_EQ(S_OK, line.as<IVeltBaseObject>()->SetObjectId(other, VkDbObjectId::kNull, nullptr));
  EXPECT_EQ(0, line.real(L"Length"));
  EXPECT_EQ((Numbers{1, 1, 0}), line.numbers(L"StartPoint"));
}

// A drawing with as many edits as the other one had.
TEST_F(LineTest, AnObjectThatIsBoundToALineOfAnotherDrawingTellsThatOnes) {
  const std::unique_ptr<Drawing> another =
      Sample().entity("LINE", {{10, "7"}, {20, "7"}, {11, "7"}, {21, "9"}}).open();
  const Bound line(*drawing, 0);
  EXPECT_EQ((Numbers{1, 2, 3}), line.numbers(L"StartPoint"));
  VkDbObjectId other = another->entities()[0];
  EXPECT_EQ(S_OK, line.as<IVeltBaseObject>()->SetObjectId(other, VkDbObjectId::kNull, nullptr));
  EXPECT_EQ((Numbers{7, 7, 0}), line.numbers(L"StartPoint"));
  EXPECT_EQ(2, line.real(L"Length"));
}

TEST_F(LineTest, ALineWithoutExtentHasAnAngleOfZero) {
  const Bound line(*drawing, 1);
  EXPECT_EQ(0, line.real(L"Length"));
  EXPECT_EQ(0, line.real(L"Angle"));
  EXPECT_EQ(0, line.real(L"Thickness"));
}

TEST_F(LineTest, PointsAreExpandedUnderTheirLabels) {
  const Bound line(*drawing, 0);
  EXPECT_EQ((std::vector<std::wstring>{L"Start X", L"Start Y", L"Start Z"}),
            line.elementLabels(L"StartPoint"));
  EXPECT_EQ((std::vector<std::wstring>{L"Delta X", L"Delta Y", L"Delta Z"}), line.elementLabels(L"Delta"));
  EXPECT_EQ(15, line.element(L"EndPoint", 2));
}

TEST_F(LineTest, AnEndIsPutWhereItIsWanted) {
  const Bound line(*drawing, 1);
  EXPECT_EQ(S_OK, line.putElement(L"EndPoint", 0, 4));
  EXPECT_EQ("10=1 20=1 11=4.0 21=1", pairsOf(*drawing, recordOf(*drawing, 1))) << "a flat line stays flat";
  EXPECT_EQ(S_OK, line.putElement(L"EndPoint", 2, 5));
  EXPECT_EQ("10=1 20=1 11=4.0 21=1 31=5.0", pairsOf(*drawing, recordOf(*drawing, 1)));
  EXPECT_EQ((Numbers{3, 0, 5}), line.numbers(L"Delta"));
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, line.put(L"Length", number(1)).result);
  EXPECT_EQ(E_ACCESSDENIED, line.putElement(L"Delta", 0, 1));
}

}  // namespace
}  // namespace velt::automation
