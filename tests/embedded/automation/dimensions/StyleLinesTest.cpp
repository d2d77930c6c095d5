#include "embedded/automation/dimensions/StyleLines.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/dimensions/StyledDimension.h"

namespace velt::automation {
namespace {

using namespace test;

using StyleLinesTest = StyledDimension;

TEST_F(StyleLinesTest, TheCenterMarkKeepsItsSizeAndItsKind) {
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

TEST_F(StyleLinesTest, TheDimensionLineIsInsideUnlessTheVariableSaysItIsNot) {
  const Bound& made = dimension({{2, "Mine"}});
  EXPECT_EQ(S_OK, made.put(L"DimLineInside", test::flag(true)).result);
  EXPECT_EQ("", overridesOf(*drawing)) << "it is already";
  EXPECT_EQ(S_OK, made.put(L"DimLineInside", test::flag(false)).result);
  EXPECT_EQ("1070=175 1070=1", overridesOf(*drawing));
  EXPECT_FALSE(made.flag(L"DimLineInside"));
}

}  // namespace
}  // namespace velt::automation
