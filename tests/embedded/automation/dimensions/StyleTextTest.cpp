#include "embedded/automation/dimensions/StyleText.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/dimensions/StyledDimension.h"

namespace velt::automation {
namespace {

using namespace test;

using StyleTextTest = StyledDimension;

TEST_F(StyleTextTest, ATextStyleIsNamedByItsHandle) {
  const Bound& made = dimension({{2, "Mine"}});
  EXPECT_EQ(S_OK, made.put(L"TextStyle", L"notes").result);
  EXPECT_EQ("1070=340 1005=51", overridesOf(*drawing));
  EXPECT_EQ(L"Notes", made.text(L"TextStyle"));
}

TEST_F(StyleTextTest, AFrameStaysAroundTheText) {
  const Bound& made = dimension({{2, "Mine"}, {147, "-1"}});
  EXPECT_EQ(S_OK, made.put(L"TextGap", number(2)).result);
  EXPECT_EQ("1070=147 1040=-2.0", overridesOf(*drawing));
  EXPECT_EQ(4, made.integer(L"ToleranceDisplay"));
  EXPECT_EQ(E_FAIL, made.put(L"TextGap", number(0)).scode) << "a frame that is none";
  EXPECT_EQ(E_INVALIDARG, made.put(L"TextGap", number(-1)).scode);
}

TEST_F(StyleTextTest, WhatStandsAroundTheMeasurementIsOneVariable) {
  const Bound& made = dimension({{2, "Mine"}, {3, " mm"}, {4, "[] in"}});
  EXPECT_EQ(S_OK, made.put(L"TextPrefix", L"abt ").result);
  EXPECT_EQ(S_OK, made.put(L"AltTextSuffix", std::wstring()).result);
  EXPECT_EQ("1070=3 1000=abt <> mm 1070=4 1000=", overridesOf(*drawing));
  EXPECT_EQ(E_INVALIDARG, made.put(L"TextSuffix", L"<>").scode);
  EXPECT_EQ(L" mm", made.text(L"TextSuffix"));
}

}  // namespace
}  // namespace velt::automation
