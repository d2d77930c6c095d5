#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Edits.h"

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

// --- putting ---

class TextPutTest : public TextTest {
 protected:
  // A first point 4 to the left of the second one and 3 below it.
  Bound hanging(const std::string& across, const std::string& up = "0") {
    return text({{100, "AcDbText"},
                 {10, "1"},
                 {20, "2"},
                 {30, "3"},
                 {40, "2"},
                 {1, "x"},
                 {72, across},
                 {11, "5"},
                 {21, "5"},
                 {31, "3"},
                 {100, "AcDbText"},
                 {73, up}});
  }
  static void expectPoint(const Numbers& expected, const Numbers& actual) {
    ASSERT_EQ(3U, actual.size());
    for (std::size_t i = 0; i < 3; ++i)
      EXPECT_NEAR(expected[i], actual[i], 1e-12) << i;
  }
};

TEST_F(TextPutTest, ATextThatHangsOnItsSecondPointMovesAsAWhole) {
  const Bound made = hanging("1");
  EXPECT_EQ(S_OK, made.putElement(L"TextAlignmentPoint", 0, 7));
  EXPECT_EQ((Numbers{3, 2, 3}), made.numbers(L"InsertionPoint"));
  EXPECT_EQ(S_OK, made.putElement(L"InsertionPoint", 2, 9));
  EXPECT_EQ((Numbers{7, 5, 9}), made.numbers(L"TextAlignmentPoint")) << "both lie in the plane of the text";
}

TEST_F(TextPutTest, ATextThatIsJustifiedLeftHasOnePoint) {
  const Bound made = hanging("0");
  const std::string before = pairsOf(*drawing);
  EXPECT_EQ(E_FAIL, made.putElement(L"TextAlignmentPoint", 0, 7));
  EXPECT_EQ(before, pairsOf(*drawing));
  EXPECT_EQ(S_OK, made.putElement(L"InsertionPoint", 0, 7));
  EXPECT_EQ((Numbers{5, 5, 3}), made.numbers(L"TextAlignmentPoint"));
}

TEST_F(TextPutTest, LettersGrowAroundThePointThatTheTextHangsOn) {
  const Bound made = hanging("2", "3");
  EXPECT_EQ(S_OK, made.put(L"Height", number(4)).result);
  expectPoint({-3, -1, 3}, made.numbers(L"InsertionPoint"));
  EXPECT_EQ(S_OK, made.put(L"ScaleFactor", number(0.5)).result);
  expectPoint({1, -1, 3}, made.numbers(L"InsertionPoint"));
  EXPECT_EQ(S_OK, made.put(L"Rotation", number(pi / 2)).result);
  expectPoint({11, 1, 3}, made.numbers(L"InsertionPoint"));
  expectPoint({5, 5, 3}, made.numbers(L"TextAlignmentPoint"));
  const Bound left = hanging("0");
  EXPECT_EQ(S_OK, left.put(L"Height", number(4)).result);
  EXPECT_EQ((Numbers{1, 2, 3}), left.numbers(L"InsertionPoint"));
}

TEST_F(TextPutTest, ATextBetweenTwoPointsTurnsWithThemAndKeepsItsLetters) {
  const Bound made = hanging("5");
  EXPECT_EQ(E_FAIL, made.put(L"Height", number(4)).scode);
  EXPECT_EQ(E_FAIL, made.put(L"ScaleFactor", number(4)).scode);
  EXPECT_EQ(S_OK, made.put(L"Rotation", number(pi / 2)).result);
  expectPoint({1, 2, 3}, made.numbers(L"InsertionPoint"));
  expectPoint({-2, 6, 3}, made.numbers(L"TextAlignmentPoint"));
}

TEST_F(TextPutTest, TheTextKeepsThePointThatItHangsOnWhenItIsJustifiedAnew) {
  const Bound made = text({{100, "AcDbText"},
                           {10, "1"},
                           {20, "2"},
                           {40, "2"},
                           {1, "x"},
                           {210, "0"},
                           {220, "0"},
                           {230, "1"},
                           {100, "AcDbText"}});
  EXPECT_EQ(S_OK, made.put(L"Justify", integer(7)).result);
  EXPECT_EQ("100=AcDbText 10=1 20=2 40=2 1=x 72=1 11=1.0 21=2.0 210=0 220=0 230=1 100=AcDbText 73=3",
            pairsOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"TextAlignmentPoint", pointValue(Vector3{5, 6, 0}).get()).result);
  EXPECT_EQ(S_OK, made.put(L"Justify", integer(0)).result);
  EXPECT_EQ("100=AcDbText 10=5.0 20=6.0 40=2 1=x 72=0 11=5.0 21=6.0 210=0 220=0 230=1 100=AcDbText 73=0",
            pairsOf(*drawing));
}

TEST_F(TextPutTest, EveryJustificationWithOnePointCanBePut) {
  const Bound made = hanging("0");
  for (int justification = 14; justification >= 0; --justification) {
    const bool isBetweenPoints = justification == 3 || justification == 5;
    EXPECT_EQ(isBetweenPoints ? DISP_E_EXCEPTION : S_OK, made.put(L"Justify", integer(justification)).result);
    if (!isBetweenPoints) {
      EXPECT_EQ(justification, made.integer(L"Justify"));
    }
  }
}

TEST_F(TextPutTest, AnOldTextHasOnePartOnly) {
  const Bound made = text({{10, "1"}, {20, "2"}, {40, "2"}, {1, "x"}});
  EXPECT_EQ(S_OK, made.put(L"Justify", integer(10)).result);
  EXPECT_EQ(10, made.integer(L"Justify"));
  EXPECT_EQ("10=1 20=2 40=2 1=x 72=1 11=1.0 21=2.0 73=2", pairsOf(*drawing));
}

TEST_F(TextPutTest, TheWordingIsOneLineInTheDrawingsEncoding) {
  const Bound made = hanging("0");
  EXPECT_EQ(S_OK, made.put(L"TextString", std::wstring(L"\u00E4 \u2264 %%c")).result);
  EXPECT_EQ(L"\u00E4 \u2264 %%c", made.text(L"TextString"));
  EXPECT_NE(std::string::npos, pairsOf(*drawing).find("1=\xE4 \\U+2264 %%c"));
  EXPECT_EQ(E_INVALIDARG, made.put(L"TextString", std::wstring(L"two\nlines")).scode);
}

TEST_F(TextPutTest, StyleAndLeanHaveTheirBounds) {
  const Bound made = hanging("0");
  EXPECT_EQ(S_OK, made.put(L"Style", std::wstring(L"NOTES")).result);
  EXPECT_EQ(L"Notes", made.text(L"Style"));
  EXPECT_EQ(E_INVALIDARG, made.put(L"Style", std::wstring(L"Lost")).scode);
  EXPECT_EQ(S_OK, made.put(L"ObliqueAngle", number(-85 * pi / 180)).result);
  EXPECT_EQ(E_INVALIDARG, made.put(L"ObliqueAngle", number(86 * pi / 180)).scode);
}

TEST_F(TextPutTest, AFieldKeepsItsWording) {
  drawing = Sample()
                .entity("TEXT", {{102, "{ACAD_XDICTIONARY"}, {360, "B"}, {102, "}"}, {40, "2.0"}, {1, "x"}})
                .object("DICTIONARY", {{5, "B"}, {3, "ACAD_FIELD"}, {360, "C"}})
                .object("DICTIONARY", {{5, "C"}})
                .open();
  const Bound made(*drawing, 0);
  EXPECT_EQ(E_FAIL, made.put(L"TextString", std::wstring(L"y")).scode);
  EXPECT_EQ(S_OK, made.put(L"TextString", std::wstring(L"x")).result) << "it has that already";
  EXPECT_EQ(S_OK, made.put(L"Height", number(3)).result);
}

}  // namespace
}  // namespace velt::automation
