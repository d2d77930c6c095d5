#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;

class MTextTest : public ::testing::Test {
 protected:
  Bound mtext(Pairs pairs) {
    drawing = Sample().version("AC1027").entity("MTEXT", pairs).open();
    return Bound(*drawing, 0);
  }

  std::unique_ptr<Drawing> drawing;
};

TEST_F(MTextTest, TellsWhatIsStored) {
  const Bound made = mtext({{100, "AcDbMText"},
                            {10, "1"},
                            {20, "2"},
                            {30, "3"},
                            {40, "2.5"},
                            {41, "80"},
                            {71, "5"},
                            {72, "3"},
                            {1, "{\\fArial;Text}"},
                            {7, "Notes"},
                            {73, "2"},
                            {44, "1.5"},
                            {90, "1"}});
  EXPECT_EQ(L"{\\fArial;Text}", made.text(L"TextString"));
  EXPECT_EQ(L"Notes", made.text(L"Style"));
  EXPECT_EQ(5, made.integer(L"Justify"));
  EXPECT_EQ(3, made.integer(L"Direction"));
  EXPECT_EQ(2.5, made.real(L"Height"));
  EXPECT_EQ(80, made.real(L"Width"));
  EXPECT_EQ(1.5, made.real(L"LineSpaceFactor"));
  EXPECT_NEAR(6.25, made.real(L"LineSpaceDistance"), 1e-14);
  EXPECT_EQ(2, made.integer(L"LineSpaceStyle"));
  EXPECT_TRUE(made.flag(L"BackgroundFill"));
  EXPECT_EQ((Numbers{1, 2, 3}), made.numbers(L"InsertionPoint"));
}

TEST_F(MTextTest, WhatIsNotStoredOrMakesNoSenseHasItsDefault) {
  const Bound made = mtext({{100, "AcDbMText"}, {71, "17"}, {72, "2"}, {90, "16"}});
  EXPECT_EQ(1, made.integer(L"Justify"));
  EXPECT_EQ(1, made.integer(L"Direction"));
  EXPECT_EQ(1, made.integer(L"LineSpaceStyle"));
  EXPECT_EQ(1, made.real(L"LineSpaceFactor"));
  EXPECT_EQ(L"Standard", made.text(L"Style"));
  EXPECT_FALSE(made.flag(L"BackgroundFill")) << "a frame alone hides nothing";
}

TEST_F(MTextTest, PiecesOfALongTextAreDecodedTogether) {
  // The character between the first two is cut in the middle of its two bytes.
  EXPECT_EQ(
      L"one \u00E4 two \u00F6",
      mtext({{100, "AcDbMText"}, {3, "one \xC3"}, {3, "\xA4 two \\U+0"}, {1, "0F6"}}).text(L"TextString"));
}

TEST_F(MTextTest, RotationIsAnAngleOrADirectionWhicheverComesLater) {
  EXPECT_NEAR(pi / 6, mtext({{100, "AcDbMText"}, {50, "30"}}).real(L"Rotation"), 1e-15);
  EXPECT_NEAR(pi / 2, mtext({{100, "AcDbMText"}, {11, "0"}, {21, "2"}, {31, "0"}}).real(L"Rotation"), 1e-15);
  EXPECT_NEAR(pi / 6,
              mtext({{100, "AcDbMText"}, {11, "0"}, {21, "2"}, {31, "0"}, {50, "30"}}).real(L"Rotation"),
              1e-15);
  EXPECT_NEAR(pi / 2,
              mtext({{100, "AcDbMText"}, {50, "30"}, {11, "0"}, {21, "2"}, {31, "0"}}).real(L"Rotation"),
              1e-15);
  EXPECT_EQ(0, mtext({{100, "AcDbMText"}}).real(L"Rotation"));
}

TEST_F(MTextTest, ADirectionIsMeasuredInThePlaneOfTheText) {
  EXPECT_NEAR(
      pi,
      mtext({{100, "AcDbMText"}, {210, "0"}, {220, "0"}, {230, "-1"}, {11, "1"}, {21, "0"}, {31, "0"}})
          .real(L"Rotation"),
      1e-15);
}

}  // namespace
}  // namespace velt::automation
