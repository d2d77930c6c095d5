#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

class DimensionRowsTest : public ::testing::Test {
 protected:
  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .tableRecord("LTYPE", {{5, "50"}, {2, "Dashed"}})
      .tableRecord("STYLE", {{5, "51"}, {2, "Notes"}})
      .tableRecord("BLOCK_RECORD", {{5, "52"}, {2, "_DotSmall"}})
      .tableRecord("BLOCK_RECORD", {{5, "53"}, {2, "_Open30"}})
      .tableRecord("DIMSTYLE", {{100, "AcDbDimStyleTableRecord"}, {2, "Mine"}, {3, "about <> mm"}, {4, "[] in"}, {40, "25"}, {41, "3.5"}, {147, "-1"},
                                {173, "1"}, {343, "52"}, {344, "53"}, {340, "51"}, {345, "50"}, {371, "35"}, {176, "1"},
                                {78, "12"}, {141, "-2.5"}, {278, "44"}, {144, "-2"}, {175, "1"}})
      .entity("DIMENSION", {{100, "AcDbDimension"}, {3, "Mine"}, {70, "33"}, {1, "<> here"}, {11, "7"}, {21, "8"}, {53, "45"}})
      .entity("DIMENSION", {{100, "AcDbDimension"}, {70, "33"}})
      .entity("DIMENSION", {{100, "AcDbDimension"}, {3, "Mine"}, {70, "36"}, {1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"},
                            {1070, "142"}, {1040, "2"}, {1070, "71"}, {1070, "1"}, {1070, "47"}, {1040, "0.1"}, {1070, "48"}, {1040, "0.2"}, {1002, "}"}})
      .open();
  // clang-format on
};

TEST_F(DimensionRowsTest, TellTheVariablesOfTheStyle) {
  const Bound made(*drawing, 0);
  EXPECT_EQ(L"Mine", made.text(L"DimStyle"));
  EXPECT_EQ(11, made.integer(L"Arrowhead1Type"));
  EXPECT_EQ(10, made.integer(L"Arrowhead2Type"));
  EXPECT_EQ(L"_DotSmall", made.text(L"Arrowhead1Block"));
  EXPECT_EQ(3.5, made.real(L"ArrowheadSize"));
  EXPECT_EQ(L"Notes", made.text(L"TextStyle"));
  EXPECT_EQ(L"Dashed", made.text(L"DimensionLinetype"));
  EXPECT_EQ(35, made.integer(L"DimensionLineWeight"));
  EXPECT_EQ(1, made.integer(L"DimensionLineColor"));
  EXPECT_EQ(25, made.real(L"ScaleFactor"));
  EXPECT_EQ(L"about ", made.text(L"TextPrefix"));
  EXPECT_EQ(L" mm", made.text(L"TextSuffix"));
  EXPECT_EQ(L"", made.text(L"AltTextPrefix"));
  EXPECT_EQ(L" in", made.text(L"AltTextSuffix"));
  EXPECT_EQ(L",", made.text(L"DecimalSeparator"));
  EXPECT_EQ(2, made.real(L"LinearScaleFactor"));
  EXPECT_TRUE(made.flag(L"SuppressLeadingZeros"));
  EXPECT_TRUE(made.flag(L"SuppressTrailingZeros"));
  EXPECT_TRUE(made.flag(L"SuppressZeroFeet"));
  EXPECT_FALSE(made.flag(L"DimLineInside"));
}

TEST_F(DimensionRowsTest, TellWhatTheDimensionItselfHas) {
  const Bound made(*drawing, 0);
  EXPECT_EQ(L"<> here", made.text(L"TextOverride"));
  EXPECT_EQ((std::vector<double>{7, 8, 0}), made.numbers(L"TextPosition"));
  EXPECT_DOUBLE_EQ(std::numbers::pi / 4, made.real(L"TextRotation"));
}

TEST_F(DimensionRowsTest, AFrameAroundTheTextIsAToleranceOfItsOwnKind) {
  EXPECT_EQ(1, Bound(*drawing, 0).real(L"TextGap"));
  EXPECT_EQ(4, Bound(*drawing, 0).integer(L"ToleranceDisplay"));
  EXPECT_EQ(0, Bound(*drawing, 1).integer(L"ToleranceDisplay"));
  EXPECT_EQ(2, Bound(*drawing, 2).integer(L"ToleranceDisplay"));
}

TEST_F(DimensionRowsTest, AStyleThatSaysNothingHasTheUsualVariables) {
  const Bound made(*drawing, 1);
  EXPECT_EQ(L"Standard", made.text(L"DimStyle"));
  EXPECT_EQ(0.18, made.real(L"ArrowheadSize"));
  EXPECT_EQ(0, made.integer(L"Arrowhead1Type"));
  EXPECT_EQ(L"ByBlock", made.text(L"DimensionLinetype"));
  EXPECT_EQ(-2, made.integer(L"DimensionLineWeight"));
  EXPECT_EQ(L"Standard", made.text(L"TextStyle"));
  EXPECT_EQ(4, made.integer(L"Precision"));
  EXPECT_EQ(2, made.integer(L"UnitsFormat"));
  EXPECT_EQ(1, made.real(L"ScaleFactor"));
  EXPECT_EQ(L".", made.text(L"DecimalSeparator"));
  EXPECT_TRUE(made.flag(L"DimLineInside"));
}

TEST_F(DimensionRowsTest, TicksStandForAllArrowheads) {
  EXPECT_EQ(5, Bound(*drawing, 2).integer(L"Arrow"));
}

TEST_F(DimensionRowsTest, TheSignOfTheCenterMarkTellsItsKind) {
  const Bound made(*drawing, 2);
  EXPECT_EQ(2, made.integer(L"CenterType"));
  EXPECT_EQ(2.5, made.real(L"CenterMarkSize"));
}

}  // namespace
}  // namespace velt::automation
