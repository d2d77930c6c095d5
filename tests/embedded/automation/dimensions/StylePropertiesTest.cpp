#include "embedded/automation/dimensions/StyleProperties.h"

#include <gtest/gtest.h>

#include <optional>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

// What stands in the list of overrides, if there is one.
std::string overridesOf(const Drawing& drawing, std::size_t entity = 0) {
  const std::string pairs = pairsOf(drawing, recordOf(drawing, entity));
  const std::size_t begin = pairs.find("1002={ ");
  return begin == std::string::npos ? "" : pairs.substr(begin + 7, pairs.size() - begin - 7 - 7);
}

// clang-format off
class StylePropertiesTest : public ::testing::Test {
 protected:
  static Sample sample() {
    return Sample()
        .version("AC1027")
        .tableRecord("APPID", {{2, "ACAD"}})
        .tableRecord("STYLE", {{5, "51"}, {2, "Notes"}})
        .tableRecord("BLOCK_RECORD", {{5, "52"}, {2, "_Dot"}})
        .tableRecord("BLOCK_RECORD", {{5, "53"}, {2, "_Oblique"}})
        .tableRecord("BLOCK_RECORD", {{5, "54"}, {2, "My arrow"}})
        .tableRecord("BLOCK_RECORD", {{5, "55"}, {2, "*D1"}});
  }
  // One of that style, which is called Mine.
  const Bound& dimension(Pairs style, const char* kind = "33") {
    drawing = sample()
                  .tableRecord("DIMSTYLE", style)
                  .tableRecord("DIMSTYLE", {{2, "Other"}, {144, "3"}})
                  .entity("DIMENSION", {{100, "AcDbDimension"}, {3, "Mine"}, {70, kind}, {42, "5.0"}, {14, "5"}})
                  .open();
    bound.emplace(*drawing, 0);
    return *bound;
  }
  std::unique_ptr<Drawing> drawing;
  std::optional<Bound> bound;
};
// clang-format on

TEST_F(StylePropertiesTest, ArrowheadsThatDifferHaveVariablesOfTheirOwn) {
  const Bound& made = dimension({{2, "Mine"}, {342, "52"}});
  EXPECT_EQ(S_OK, made.put(L"Arrowhead2Block", L"my ARROW").result);
  EXPECT_EQ("1070=343 1005=52 1070=173 1070=1 1070=344 1005=54", overridesOf(*drawing));
  EXPECT_EQ(3, made.integer(L"Arrowhead1Type"));
  EXPECT_EQ(20, made.integer(L"Arrowhead2Type"));
  EXPECT_EQ(S_OK, made.put(L"Arrowhead1Type", test::integer(0)).result);
  EXPECT_EQ("1070=343 1005=0 1070=173 1070=1 1070=344 1005=54", overridesOf(*drawing));
}

TEST_F(StylePropertiesTest, AnArrowheadInPlaceOfATickEndsTheTicks) {
  const Bound& made = dimension({{2, "Mine"}, {142, "2"}, {173, "1"}, {343, "52"}});
  EXPECT_EQ(S_OK, made.put(L"Arrowhead1Type", test::integer(5)).result);
  EXPECT_EQ("", overridesOf(*drawing)) << "ticks are that already";
  EXPECT_EQ(S_OK, made.put(L"Arrowhead1Type", test::integer(3)).result);
  EXPECT_EQ("1070=142 1040=0.0 1070=344 1005=53 1070=343 1005=52", overridesOf(*drawing));
  EXPECT_EQ(5, made.integer(L"Arrowhead2Type"));
}

TEST_F(StylePropertiesTest, OnlyBlocksOfTheDrawingCanBeArrowheads) {
  const Bound& made = dimension({{2, "Mine"}});
  EXPECT_EQ(E_FAIL, made.put(L"Arrowhead1Type", test::integer(6)).scode) << "no block _Open";
  EXPECT_EQ(E_INVALIDARG, made.put(L"Arrowhead1Type", test::integer(20)).scode)
      << "which block of the user's?";
  EXPECT_EQ(E_INVALIDARG, made.put(L"Arrowhead1Block", L"None").scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"Arrowhead1Block", L"*D1").scode);
  EXPECT_EQ("", overridesOf(*drawing));
}

TEST_F(StylePropertiesTest, TheCenterMarkKeepsItsSizeAndItsKind) {
  const Bound& radial = dimension({{2, "Mine"}, {141, "-2.5"}}, "36");
  EXPECT_EQ(S_OK, radial.put(L"CenterMarkSize", number(4)).result);
  EXPECT_EQ("1070=141 1040=-4.0", overridesOf(*drawing));
  EXPECT_EQ(S_OK, radial.put(L"CenterType", test::integer(1)).result);
  EXPECT_EQ("1070=141 1040=4.0", overridesOf(*drawing));
  EXPECT_EQ(S_OK, radial.put(L"CenterType", test::integer(0)).result);
  EXPECT_EQ("1070=141 1040=0.0", overridesOf(*drawing));
  EXPECT_EQ(E_FAIL, radial.put(L"CenterMarkSize", number(4)).scode) << "there is no mark";
  EXPECT_EQ(S_OK, radial.put(L"CenterType", test::integer(2)).result);
  EXPECT_EQ("1070=141 1040=-2.5", overridesOf(*drawing)) << "as large as the style has it";
  EXPECT_EQ(E_INVALIDARG, radial.put(L"CenterMarkSize", number(0)).scode);
}

TEST_F(StylePropertiesTest, AFrameStaysAroundTheText) {
  const Bound& made = dimension({{2, "Mine"}, {147, "-1"}});
  EXPECT_EQ(S_OK, made.put(L"TextGap", number(2)).result);
  EXPECT_EQ("1070=147 1040=-2.0", overridesOf(*drawing));
  EXPECT_EQ(4, made.integer(L"ToleranceDisplay"));
  EXPECT_EQ(E_FAIL, made.put(L"TextGap", number(0)).scode) << "a frame that is none";
  EXPECT_EQ(E_INVALIDARG, made.put(L"TextGap", number(-1)).scode);
}

TEST_F(StylePropertiesTest, TheToleranceIsSeveralVariables) {
  const Bound& made = dimension({{2, "Mine"}, {147, "1"}});
  EXPECT_EQ(E_FAIL, made.put(L"ToleranceDisplay", test::integer(2)).scode)
      << "deviation: the limits are equal";
  EXPECT_EQ(S_OK, made.put(L"ToleranceDisplay", test::integer(1)).result);
  EXPECT_EQ("1070=71 1070=1", overridesOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"ToleranceUpperLimit", number(0.5)).result);
  EXPECT_EQ(0.5, made.real(L"ToleranceLowerLimit")) << "symmetrical ones are one number";
  EXPECT_EQ(S_OK, made.put(L"ToleranceDisplay", test::integer(4)).result);
  EXPECT_EQ("1070=71 1070=0 1070=47 1040=0.5 1070=48 1040=0.5 1070=147 1040=-1.0", overridesOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"ToleranceDisplay", test::integer(3)).result);
  EXPECT_EQ("1070=71 1070=0 1070=47 1040=0.5 1070=48 1040=0.5 1070=147 1040=1.0 1070=72 1070=1",
            overridesOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"ToleranceLowerLimit", number(0.25)).result);
  EXPECT_EQ(0.5, made.real(L"ToleranceUpperLimit"));
  EXPECT_EQ(E_FAIL, made.put(L"ToleranceDisplay", test::integer(1)).scode)
      << "symmetrical: the limits differ";
  EXPECT_EQ(S_OK, made.put(L"ToleranceDisplay", test::integer(2)).result);
  EXPECT_EQ(E_FAIL, made.put(L"ToleranceLowerLimit", number(0.5)).scode) << "they would become symmetrical";
  EXPECT_EQ(2, made.integer(L"ToleranceDisplay"));
}

TEST_F(StylePropertiesTest, WhatStandsAroundTheMeasurementIsOneVariable) {
  const Bound& made = dimension({{2, "Mine"}, {3, " mm"}, {4, "[] in"}});
  EXPECT_EQ(S_OK, made.put(L"TextPrefix", L"abt ").result);
  EXPECT_EQ(S_OK, made.put(L"AltTextSuffix", std::wstring()).result);
  EXPECT_EQ("1070=3 1000=abt <> mm 1070=4 1000=", overridesOf(*drawing));
  EXPECT_EQ(E_INVALIDARG, made.put(L"TextSuffix", L"<>").scode);
  EXPECT_EQ(L" mm", made.text(L"TextSuffix"));
}

TEST_F(StylePropertiesTest, ZerosOfFeetAndInchesShareTwoBits) {
  const Bound& made = dimension({{2, "Mine"}, {78, "12"}});
  EXPECT_EQ(S_OK, made.put(L"SuppressZeroFeet", test::flag(false)).result);
  EXPECT_EQ("1070=78 1070=14", overridesOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"SuppressZeroInches", test::flag(false)).result);
  EXPECT_EQ("1070=78 1070=13", overridesOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"SuppressLeadingZeros", test::flag(false)).result);
  EXPECT_EQ("1070=78 1070=9", overridesOf(*drawing));
}

TEST_F(StylePropertiesTest, TheStoredMeasurementFollowsTheLinearScale) {
  const Bound& made = dimension({{2, "Mine"}, {144, "-1"}});
  EXPECT_EQ(S_OK, made.put(L"LinearScaleFactor", number(2)).result);
  EXPECT_EQ("1070=144 1040=-2.0", overridesOf(*drawing)) << "counts on sheets only, as before";
  EXPECT_EQ(5, made.real(L"Measurement"));
  const Bound& plain = dimension({{2, "Mine"}});
  EXPECT_EQ(S_OK, plain.put(L"LinearScaleFactor", number(2)).result);
  EXPECT_EQ(10, plain.real(L"Measurement"));
  EXPECT_EQ(10, database::Lens(*drawing, recordOf(*drawing, 0)).real(42, "AcDbDimension", 0));
  EXPECT_EQ(E_INVALIDARG, plain.put(L"LinearScaleFactor", number(0)).scode);
}

TEST_F(StylePropertiesTest, AnotherStyleIsSpelledAsItsTableHasIt) {
  const Bound& made = dimension({{2, "Mine"}, {41, "2"}});
  EXPECT_EQ(S_OK, made.put(L"DimStyle", L"MINE").result);
  EXPECT_EQ(L"Mine", made.text(L"DimStyle"));
  EXPECT_EQ(S_OK, made.put(L"DimStyle", L"OTHER").result);
  EXPECT_EQ(L"Other", made.text(L"DimStyle"));
  EXPECT_EQ(15, made.real(L"Measurement"));
  EXPECT_EQ(15, database::Lens(*drawing, recordOf(*drawing, 0)).real(42, "AcDbDimension", 0));
  EXPECT_EQ(E_INVALIDARG, made.put(L"DimStyle", L"None").scode);
}

TEST_F(StylePropertiesTest, ASeparatorIsOneCharacter) {
  const Bound& made = dimension({{2, "Mine"}});
  EXPECT_EQ(S_OK, made.put(L"DecimalSeparator", L",").result);
  EXPECT_EQ("1070=278 1070=44", overridesOf(*drawing));
  EXPECT_EQ(E_INVALIDARG, made.put(L"DecimalSeparator", L"..").scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"DecimalSeparator", std::wstring()).scode);
  EXPECT_EQ(L",", made.text(L"DecimalSeparator"));
}

TEST_F(StylePropertiesTest, ATextStyleIsNamedByItsHandle) {
  const Bound& made = dimension({{2, "Mine"}});
  EXPECT_EQ(S_OK, made.put(L"TextStyle", L"notes").result);
  EXPECT_EQ("1070=340 1005=51", overridesOf(*drawing));
  EXPECT_EQ(L"Notes", made.text(L"TextStyle"));
}

TEST_F(StylePropertiesTest, TheTextOfALeaderKeepsItsPlace) {
  const auto leader = [&](const char* annotation) {
    drawing = sample()
                  .tableRecord("DIMSTYLE", {{2, "Mine"}, {147, "1"}})
                  .tableRecord("DIMSTYLE", {{2, "Wide"}, {147, "2"}})
                  .tableRecord("DIMSTYLE", {{2, "Red"}, {147, "1"}, {176, "1"}})
                  .entity("LEADER", {{100, "AcDbLeader"}, {3, "Mine"}, {73, annotation}})
                  .open();
    return Bound(*drawing, 0);
  };
  const Bound withText = leader("0");
  const std::string before = pairsOf(*drawing);
  EXPECT_EQ(E_FAIL, withText.put(L"TextGap", number(3)).scode);
  EXPECT_EQ(E_FAIL, withText.put(L"VerticalTextPosition", test::integer(1)).scode);
  EXPECT_EQ(E_FAIL, withText.put(L"DimStyle", L"Wide").scode);
  EXPECT_EQ(before, pairsOf(*drawing));
  EXPECT_EQ(S_OK, withText.put(L"DimStyle", L"Red").result);
  EXPECT_EQ(S_OK, withText.put(L"ArrowheadSize", number(3)).result);
  EXPECT_EQ(S_OK, withText.put(L"ArrowheadBlock", L"_dot").result);
  EXPECT_EQ("1070=41 1040=3.0 1070=341 1005=52", overridesOf(*drawing));

  const Bound alone = leader("3");
  EXPECT_EQ(S_OK, alone.put(L"TextGap", number(3)).result);
  EXPECT_EQ(S_OK, alone.put(L"DimStyle", L"Wide").result);
  EXPECT_EQ(3, alone.real(L"TextGap")) << "what is overridden stays";
}

}  // namespace
}  // namespace velt::automation
