#include "embedded/automation/dimensions/StyleUnits.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/dimensions/StyledDimension.h"

namespace velt::automation {
namespace {

using namespace test;

using StyleUnitsTest = StyledDimension;

TEST_F(StyleUnitsTest, ZerosOfFeetAndInchesShareTwoBits) {
  const Bound& made = dimension({{2, "Mine"}, {78, "12"}});
  EXPECT_EQ(S_OK, made.put(L"SuppressZeroFeet", test::flag(false)).result);
  EXPECT_EQ("1070=78 1070=14", overridesOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"SuppressZeroInches", test::flag(false)).result);
  EXPECT_EQ("1070=78 1070=13", overridesOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"SuppressLeadingZeros", test::flag(false)).result);
  EXPECT_EQ("1070=78 1070=9", overridesOf(*drawing));
}

TEST_F(StyleUnitsTest, ASeparatorIsOneCharacter) {
  const Bound& made = dimension({{2, "Mine"}});
  EXPECT_EQ(S_OK, made.put(L"DecimalSeparator", L",").result);
  EXPECT_EQ("1070=278 1070=44", overridesOf(*drawing));
  EXPECT_EQ(E_INVALIDARG, made.put(L"DecimalSeparator", L"..").scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"DecimalSeparator", std::wstring()).scode);
  EXPECT_EQ(L",", made.text(L"DecimalSeparator"));
}

TEST_F(StyleUnitsTest, OlderDrawingsHaveTheFormatInAnotherVariable) {
  EXPECT_EQ(4, dimension({{2, "Mine"}, {270, "4"}}).integer(L"UnitsFormat"));
  EXPECT_EQ(5, dimension({{2, "Mine"}, {270, "4"}, {277, "5"}}).integer(L"UnitsFormat"));
  EXPECT_EQ(2, dimension({{2, "Mine"}, {270, "77"}}).integer(L"UnitsFormat")) << "none of the formats";
}

}  // namespace
}  // namespace velt::automation
