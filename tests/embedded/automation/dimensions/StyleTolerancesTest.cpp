#include "embedded/automation/dimensions/StyleTolerances.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/dimensions/StyledDimension.h"

namespace velt::automation {
namespace {

using namespace test;

using StyleTolerancesTest = StyledDimension;

TEST_F(StyleTolerancesTest, TheToleranceIsSeveralVariables) {
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

}  // namespace
}  // namespace velt::automation
