#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>

#include "tests/embedded/automation/Edits.h"

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

TEST_F(HatchTest, AGradientHasANameAnAngleAndTwoColors) {
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

TEST_F(HatchTest, AGradientOfOneColorSaysThatItHasNoSecond) {
  const Bound made = hatch({{100, "AcDbHatch"}, {450, "1"}, {463, "0"}, {63, "5"}});
  EXPECT_EQ(0xC3000005U, colorOf(made, L"GradientColor1"));
  EXPECT_EQ(DISP_E_EXCEPTION, made.get(L"GradientColor2").result);
}

TEST_F(HatchTest, WithoutABackgroundThereIsNoColor) {
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

// --- putting ---

const Pairs linedHatch = {{10, "0.0"}, {20, "0.0"},  {30, "7.0"}, {2, "ANSI31"}, {70, "0"},
                          {71, "0"},   {91, "0"},    {75, "0"},   {76, "1"},     {52, "0.0"},
                          {41, "2.0"}, {77, "0"},    {78, "1"},   {53, "45.0"},  {43, "1.0"},
                          {44, "0.0"}, {45, "-3.0"}, {46, "3.0"}, {79, "0"}};

TEST_F(HatchTest, TheLinesOfAPatternFollowItsAngleAndScale) {
  const Bound made = hatch(linedHatch);
  EXPECT_EQ(S_OK, made.put(L"HatchScale", number(4)).result);
  EXPECT_EQ(S_OK, made.put(L"Angle", number(pi / 2)).result);
  const database::Lens lens(*drawing, recordOf(*drawing, 0));
  EXPECT_EQ(4, lens.real(41, "*", 0));
  EXPECT_EQ(90, lens.real(52, "*", 0));
  EXPECT_EQ(135, lens.real(53, "*", 0));
  EXPECT_NEAR(0, lens.real(43, "*", 9), 1e-12);
  EXPECT_NEAR(2, lens.real(44, "*", 9), 1e-12);
  EXPECT_NEAR(-6, lens.real(45, "*", 9), 1e-12);
  EXPECT_NEAR(-6, lens.real(46, "*", 9), 1e-12);
}

TEST_F(HatchTest, ThePlainLinesFollowTheirSpacing) {
  const Bound made = hatch({{70, "0"},
                            {76, "0"},
                            {52, "0.0"},
                            {41, "2.0"},
                            {78, "1"},
                            {53, "0.0"},
                            {43, "0.0"},
                            {44, "0.0"},
                            {45, "0.0"},
                            {46, "2.0"},
                            {79, "0"}});
  EXPECT_EQ(S_OK, made.put(L"Spacing", number(3)).result);
  EXPECT_EQ(3, made.real(L"Spacing"));
  EXPECT_EQ("70=0 76=0 52=0.0 41=3.0 78=1 53=0.0 43=0.0 44=0.0 45=0.0 46=3.0 79=0", pairsOf(*drawing));
  EXPECT_EQ(E_FAIL, made.put(L"HatchScale", number(4)).scode) << "it has a spacing instead";
}

TEST_F(HatchTest, APatternIsChosenByItsName) {
  const Bound made = hatch(linedHatch);
  EXPECT_EQ(S_OK, made.put(L"PatternName", std::wstring(L"net")).result);
  EXPECT_EQ(L"NET", made.text(L"PatternName"));
  EXPECT_EQ(2, made.real(L"HatchScale")) << "scale and angle stay";
  EXPECT_EQ(
      "10=0.0 20=0.0 30=7.0 2=NET 70=0 71=0 91=0 75=0 76=1 52=0.0 41=2.0 77=0 78=2 "
      "53=0.0 43=0.0 44=0.0 45=0.0 46=0.25 79=0 53=90.0 43=0.0 44=0.0 45=-0.25 46=0.0 79=0",
      pairsOf(*drawing));
  EXPECT_EQ(E_INVALIDARG, made.put(L"PatternName", std::wstring(L"PLAID")).scode);
}

TEST_F(HatchTest, TheSolidFillingIsAPatternLikeOthers) {
  const Bound made = hatch(linedHatch);
  EXPECT_EQ(S_OK, made.put(L"PatternName", std::wstring(L"SOLID")).result);
  EXPECT_EQ("10=0.0 20=0.0 30=7.0 2=SOLID 70=1 71=0 91=0 75=0 76=1", pairsOf(*drawing));
  EXPECT_EQ(3, made.integer(L"Type"));
  EXPECT_EQ(S_OK, made.put(L"PatternName", std::wstring(L"LINE")).result);
  EXPECT_EQ(1, made.integer(L"Type"));
  EXPECT_EQ(1, made.real(L"HatchScale"));
}

TEST_F(HatchTest, ThePatternsAreThePredefinedOnesAndThoseOfTheDrawing) {
  drawing = Sample()
                .entity("HATCH", linedHatch)
                .entity("HATCH", {{2, "WAVES,_O"}, {70, "0"}, {76, "2"}, {53, "0.0"}})
                .entity("HATCH", {{2, "LOST"}, {70, "0"}, {76, "2"}})
                .open();
  const auto names = Bound(*drawing, 0).choices(L"PatternName");
  ASSERT_TRUE(names.has_value());
  EXPECT_EQ(L"SOLID", names->front());
  EXPECT_EQ(L"WAVES", names->back())
      << "by its own name; a pattern whose lines no hatch has cannot be chosen";
  EXPECT_EQ(1, std::count(names->begin(), names->end(), L"ANSI31"));
  EXPECT_EQ(S_OK, Bound(*drawing, 1).put(L"PatternName", std::wstring(L"NET")).result);
  EXPECT_NE(L"WAVES", Bound(*drawing, 0).choices(L"PatternName")->back()) << "no hatch has it any more";
}

TEST_F(HatchTest, AGradientHasNoPatternToBeChosen) {
  EXPECT_EQ(E_FAIL, hatch({{2, "SOLID"}, {70, "1"}, {76, "1"}, {450, "1"}})
                        .put(L"PatternName", std::wstring(L"LINE"))
                        .scode);
}

TEST_F(HatchTest, ASecondFamilyCrossesPlainLinesOrGoes) {
  const Pairs plain = {{2, "U"},    {70, "0"},   {76, "0"},   {52, "0.0"}, {41, "2.0"}, {77, "0"}, {78, "1"},
                       {53, "0.0"}, {43, "1.0"}, {44, "0.0"}, {45, "0.0"}, {46, "2.0"}, {79, "0"}};
  const Bound made = hatch(plain);
  EXPECT_EQ(S_OK, made.put(L"Double", flag(true)).result);
  EXPECT_EQ(
      "2=U 70=0 76=0 52=0.0 41=2.0 77=1 78=2 53=0.0 43=1.0 44=0.0 45=0.0 46=2.0 79=0 "
      "53=90.0 43=1.0 44=0.0 45=-2.0 46=0.0 79=0",
      pairsOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"Double", flag(false)).result);
  EXPECT_EQ("2=U 70=0 76=0 52=0.0 41=2.0 77=0 78=1 53=0.0 43=1.0 44=0.0 45=0.0 46=2.0 79=0",
            pairsOf(*drawing));
}

TEST_F(HatchTest, TheAssociationIsGivenUpAndNotGotBack) {
  const Bound made = hatch({{71, "1"}, {97, "1"}, {330, "77"}});
  EXPECT_EQ(S_OK, made.put(L"Associative", flag(false)).result);
  EXPECT_EQ("71=0 97=0", pairsOf(*drawing));
  EXPECT_EQ(E_FAIL, made.put(L"Associative", flag(true)).scode);
}

TEST_F(HatchTest, WhatAFillingLacksIsRefused) {
  const Bound solid = hatch({{70, "1"}, {41, "2.0"}, {52, "0.0"}});
  for (const wchar_t* name : {L"Angle", L"HatchScale", L"Spacing", L"GradientAngle"})
    EXPECT_EQ(E_FAIL, solid.put(name, number(1)).scode);
  EXPECT_EQ(E_FAIL, solid.put(L"GradientName", std::wstring(L"CURVED")).scode);
  EXPECT_EQ("70=1 41=2.0 52=0.0", pairsOf(*drawing));
}

TEST_F(HatchTest, AGradientTakesAKnownNameAndAnAngle) {
  const Bound made = hatch({{70, "1"}, {450, "1"}, {460, "0.0"}, {470, "LINEAR"}});
  EXPECT_EQ(S_OK, made.put(L"GradientName", std::wstring(L"curved")).result);
  EXPECT_EQ(S_OK, made.put(L"GradientAngle", number(1)).result);
  EXPECT_EQ("70=1 450=1 460=1.0 470=CURVED", pairsOf(*drawing));
  EXPECT_EQ(E_INVALIDARG, made.put(L"GradientName", std::wstring(L"SPIRAL")).scode);
}

TEST_F(HatchTest, AHatchThatFollowsItsBoundaryKeepsItsElevation) {
  const Bound made = hatch(linedHatch);
  EXPECT_EQ(S_OK, made.put(L"Elevation", number(9)).result);
  EXPECT_EQ(9, made.real(L"Elevation"));
  EXPECT_EQ(S_OK,
            hatch({{10, "0.0"}, {20, "0.0"}, {91, "1"}, {10, "5.0"}}).put(L"Elevation", number(9)).result);
  EXPECT_EQ("10=0.0 20=0.0 30=9.0 91=1 10=5.0", pairsOf(*drawing));
  EXPECT_EQ(E_FAIL,
            hatch({{10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {71, "1"}}).put(L"Elevation", number(9)).scode);
  drawing->setBreaksAssociations(true);
  EXPECT_EQ(S_OK, Bound(*drawing, 0).put(L"Elevation", number(9)).result);
  EXPECT_EQ("10=0.0 20=0.0 30=9.0 71=0", pairsOf(*drawing));
}

TEST_F(HatchTest, ThePatternTurnsAndGrowsAboutItsOrigin) {
  const Pairs pairs = {{70, "0"},   {76, "1"},      {52, "0.0"},   {41, "1.0"},  {78, "1"},
                       {53, "0.0"}, {43, "3.0"},    {44, "1.0"},   {45, "0.0"},  {46, "2.0"},
                       {79, "0"},   {1001, "ACAD"}, {1010, "1.0"}, {1020, "1.0"}};
  EXPECT_EQ(S_OK, hatch(pairs).put(L"HatchScale", number(2)).result);
  EXPECT_EQ(5, database::Lens(*drawing, recordOf(*drawing, 0)).real(43, "*", 0));
  EXPECT_EQ(S_OK, hatch(pairs).put(L"Angle", number(pi / 2)).result);
  const database::Lens turned(*drawing, recordOf(*drawing, 0));
  EXPECT_NEAR(1, turned.real(43, "*", 0), 1e-12);
  EXPECT_NEAR(3, turned.real(44, "*", 0), 1e-12);
}

}  // namespace
}  // namespace velt::automation
