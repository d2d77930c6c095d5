#include "embedded/automation/dimensions/StyleName.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/dimensions/StyledDimension.h"

namespace velt::automation {
namespace {

using namespace test;

using StyleNameTest = StyledDimension;

TEST_F(StyleNameTest, AnotherStyleIsSpelledAsItsTableHasIt) {
  const Bound& made = dimension({{2, "Mine"}, {41, "2"}});
  EXPECT_EQ(S_OK, made.put(L"DimStyle", L"MINE").result);
  EXPECT_EQ(L"Mine", made.text(L"DimStyle"));
  EXPECT_EQ(S_OK, made.put(L"DimStyle", L"OTHER").result);
  EXPECT_EQ(L"Other", made.text(L"DimStyle"));
  EXPECT_EQ(15, made.real(L"Measurement"));
  EXPECT_EQ(15, database::Lens(*drawing, recordOf(*drawing, 0)).real(42, "AcDbDimension", 0));
  EXPECT_EQ(E_INVALIDARG, made.put(L"DimStyle", L"None").scode);
}

TEST_F(StyleNameTest, TheTextOfALeaderKeepsItsPlace) {
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
