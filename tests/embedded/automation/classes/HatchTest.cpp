#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;

class HatchTest : public ::testing::Test {
 protected:
  Bound hatch(Pairs pairs) {
    drawing = Sample().entity("HATCH", pairs).open();
    return Bound(*drawing, 0);
  }
  static std::uint32_t colorOf(const Bound& made, const wchar_t* name) {
    const Answer answer = made.get(name);
    EXPECT_EQ(S_OK, answer.result);
    LONG value = 0;
    if (answer.value.get().vt == VT_DISPATCH) {
      ask<IVeltVkCmColor>(*answer.value.get().pdispVal)->get_EntityColor(&value);
    }
    return static_cast<std::uint32_t>(value);
  }

  std::unique_ptr<Drawing> drawing;
};

TEST_F(HatchTest, APatternTellsWhatIsStored) {
  const Bound made = hatch({{100, "AcDbHatch"},
                            {10, "0"},
                            {20, "0"},
                            {30, "7"},
                            {2, "ANSI31"},
                            {70, "0"},
                            {71, "1"},
                            {91, "0"},
                            {75, "1"},
                            {76, "1"},
                            {52, "45"},
                            {41, "2.5"},
                            {77, "0"},
                            {1001, "ACAD"},
                            {1010, "3"},
                            {1020, "4"},
                            {1030, "0"},
                            {1001, "HATCHBACKGROUNDCOLOR"},
                            {1071, "-1023410171"}});
  EXPECT_EQ(L"ANSI31", made.text(L"PatternName"));
  EXPECT_EQ(1, made.integer(L"Type"));
  EXPECT_NEAR(pi / 4, made.real(L"Angle"), 1e-15);
  EXPECT_EQ(2.5, made.real(L"HatchScale"));
  EXPECT_TRUE(made.flag(L"Associative"));
  EXPECT_EQ(1, made.integer(L"IslandStyle"));
  EXPECT_EQ(7, made.real(L"Elevation"));
  EXPECT_EQ((Numbers{3, 4, 0}), made.numbers(L"Origin"));
  EXPECT_EQ(0xC3000005U, colorOf(made, L"BackgroundColor"));
  EXPECT_EQ(-1, made.integer(L"ISOPenWidth"));
}

TEST_F(HatchTest, TheTypeNamesFillingsWithoutAPatternToo) {
  EXPECT_EQ(2, hatch({{76, "2"}}).integer(L"Type"));
  EXPECT_EQ(0, hatch({{76, "0"}}).integer(L"Type"));
  EXPECT_EQ(3, hatch({{70, "1"}, {76, "1"}}).integer(L"Type"));
  EXPECT_EQ(4, hatch({{70, "1"}, {76, "1"}, {450, "1"}}).integer(L"Type"));
  EXPECT_EQ(1, hatch({{76, "9"}}).integer(L"Type"));
}

TEST_F(HatchTest, SpacingIsTheDistanceOfThePatternsLines) {
  const Bound made = hatch({{76, "0"}, {41, "9"}, {77, "1"}, {78, "1"}, {53, "90"}, {45, "-2.5"}, {46, "1"}});
  EXPECT_NEAR(2.5, made.real(L"Spacing"), 1e-15);
  EXPECT_TRUE(made.flag(L"Double"));
  EXPECT_EQ(9, hatch({{76, "0"}, {41, "9"}}).real(L"Spacing")) << "without lines the scale is the spacing";
}

TEST_F(HatchTest, AnIsoPatternIsScaledToItsPen) {
  EXPECT_EQ(50, hatch({{2, "X_ISO02W100"}, {41, "0.5"}}).integer(L"ISOPenWidth"));
  EXPECT_EQ(100, hatch({{2, "X_ISO02W100"}}).integer(L"ISOPenWidth"));
  EXPECT_EQ(-1, hatch({{2, "X_ISO02W100"}, {41, "0.51"}}).integer(L"ISOPenWidth"));
  EXPECT_EQ(-1, hatch({{2, "ANSI31"}, {41, "0.5"}}).integer(L"ISOPenWidth"));
}

TEST_F(HatchTest, AGradientHasANameAnAngleAndTwoColours) {
  const Bound made = hatch({{100, "AcDbHatch"},
                            {70, "1"},
                            {450, "1"},
                            {460, "0.7853981633974483"},
                            {453, "2"},
                            {463, "0"},
                            {63, "5"},
                            {421, "255"},
                            {463, "1"},
                            {63, "2"},
                            {421, "16776960"},
                            {470, "LINEAR"}});
  EXPECT_EQ(L"LINEAR", made.text(L"GradientName"));
  EXPECT_NEAR(pi / 4, made.real(L"GradientAngle"), 1e-15);
  EXPECT_EQ(0xC20000FFU, colorOf(made, L"GradientColor1"));
  EXPECT_EQ(0xC2FFFF00U, colorOf(made, L"GradientColor2"));
  EXPECT_EQ(9U, made.choices(L"GradientName")->size());
}

TEST_F(HatchTest, AGradientOfOneColourSaysThatItHasNoSecond) {
  const Bound made = hatch({{100, "AcDbHatch"}, {450, "1"}, {463, "0"}, {63, "5"}});
  EXPECT_EQ(0xC3000005U, colorOf(made, L"GradientColor1"));
  EXPECT_EQ(DISP_E_EXCEPTION, made.get(L"GradientColor2").result);
}

TEST_F(HatchTest, WithoutABackgroundTheColourIsNone) {
  EXPECT_EQ(0xC8000000U, colorOf(hatch({}), L"BackgroundColor"));
  EXPECT_EQ((Numbers{0, 0, 0}), hatch({}).numbers(L"Origin"));
}

TEST_F(HatchTest, AnAreaThatCannotBeToldIsNotMadeUp) {
  const Bound made = hatch({{100, "AcDbHatch"},
                            {91, "1"},
                            {92, "1"},
                            {93, "1"},
                            {72, "1"},
                            {10, "0"},
                            {20, "0"},
                            {11, "1"},
                            {21, "0"}});
  const Answer answer = made.get(L"Area");
  EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
  EXPECT_NE(std::wstring::npos, answer.description.find(L"do not form closed loops"));
}

TEST_F(HatchTest, TheAreaIsTheOneOfItsBoundary) {
  EXPECT_NEAR(pi * 4,
              hatch({{100, "AcDbHatch"},
                     {91, "1"},
                     {92, "1"},
                     {93, "1"},
                     {72, "2"},
                     {10, "0"},
                     {20, "0"},
                     {40, "2"},
                     {50, "0"},
                     {51, "360"},
                     {73, "1"}})
                  .real(L"Area"),
              1e-13);
}

}  // namespace
}  // namespace velt::automation
