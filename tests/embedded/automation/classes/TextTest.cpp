#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;

class TextTest : public ::testing::Test {
 protected:
  Bound text(Pairs pairs) {
    drawing = Sample().tableRecord("STYLE", {{2, "Notes"}}).entity("TEXT", pairs).open();
    return Bound(*drawing, 0);
  }
  LONG justification(const std::string& across, const std::string& up) {
    return text({{100, "AcDbText"}, {1, "x"}, {72, across}, {100, "AcDbText"}, {73, up}}).integer(L"Justify");
  }

  std::unique_ptr<Drawing> drawing;
};

TEST_F(TextTest, TellsWhatIsStored) {
  const Bound made = text({{100, "AcDbText"},
                           {39, "1"},
                           {10, "1"},
                           {20, "2"},
                           {30, "3"},
                           {40, "2.5"},
                           {1, "%%c12 \\U+00E4"},
                           {50, "-30"},
                           {41, "0.8"},
                           {51, "-15"},
                           {7, "Notes"},
                           {71, "2"},
                           {72, "4"},
                           {11, "5"},
                           {21, "6"},
                           {31, "7"},
                           {100, "AcDbText"}});
  EXPECT_EQ(L"%%c12 \u00E4", made.text(L"TextString"));
  EXPECT_EQ(L"Notes", made.text(L"Style"));
  EXPECT_EQ(2.5, made.real(L"Height"));
  EXPECT_NEAR(11 * pi / 6, made.real(L"Rotation"), 1e-15);
  EXPECT_EQ(0.8, made.real(L"ScaleFactor"));
  EXPECT_NEAR(-pi / 12, made.real(L"ObliqueAngle"), 1e-15) << "a lean to the left stays negative";
  EXPECT_EQ((Numbers{1, 2, 3}), made.numbers(L"InsertionPoint"));
  EXPECT_EQ((Numbers{5, 6, 7}), made.numbers(L"TextAlignmentPoint"));
  EXPECT_TRUE(made.flag(L"Backward"));
  EXPECT_FALSE(made.flag(L"UpsideDown"));
  EXPECT_EQ(4, made.integer(L"Justify"));
  EXPECT_EQ(1, made.real(L"Thickness"));
}

TEST_F(TextTest, WhatIsNotStoredHasItsDefault) {
  const Bound made = text({{100, "AcDbText"}});
  EXPECT_EQ(L"", made.text(L"TextString"));
  EXPECT_EQ(L"Standard", made.text(L"Style"));
  EXPECT_EQ(1, made.real(L"ScaleFactor"));
  EXPECT_EQ(0, made.integer(L"Justify"));
  EXPECT_EQ(std::vector<std::wstring>{L"Notes"}, made.choices(L"Style"));
}

TEST_F(TextTest, JustificationNamesEveryPairOfAcrossAndUp) {
  for (int across = 0; across <= 5; ++across)
    EXPECT_EQ(across, justification(std::to_string(across), "0"));
  for (int across = 0; across <= 2; ++across) {
    EXPECT_EQ(6 + across, justification(std::to_string(across), "3"));
    EXPECT_EQ(9 + across, justification(std::to_string(across), "2"));
    EXPECT_EQ(12 + across, justification(std::to_string(across), "1"));
  }
}

TEST_F(TextTest, AJustificationThatMeansNothingIsLeft) {
  EXPECT_EQ(0, justification("9", "0"));
  EXPECT_EQ(0, justification("-1", "2"));
  EXPECT_EQ(1, justification("1", "7"));
  EXPECT_EQ(5, justification("5", "2")) << "what is fitted has no rows";
}

TEST_F(TextTest, JustificationsAreOfferedWithTheirLabels) {
  const Bound made = text({});
  const auto labels = made.choices(L"Justify");
  ASSERT_EQ(15U, labels->size());
  EXPECT_EQ(L"Middle center", labels->at(10));
  EXPECT_EQ(10, made.choiceValue(L"Justify", 10).get().lVal);
}

TEST_F(TextTest, PointsAreOfferedInTheWorld) {
  const Bound made = text({{100, "AcDbText"},
                           {10, "1"},
                           {20, "2"},
                           {30, "3"},
                           {11, "5"},
                           {21, "6"},
                           {31, "7"},
                           {210, "0"},
                           {220, "0"},
                           {230, "-1"},
                           {100, "AcDbText"}});
  EXPECT_EQ((Numbers{-1, 2, -3}), made.numbers(L"InsertionPoint"));
  EXPECT_EQ((Numbers{-5, 6, -7}), made.numbers(L"TextAlignmentPoint"));
}

}  // namespace
}  // namespace velt::automation
