#include "embedded/automation/dimensions/Arrowheads.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/dimensions/StyledDimension.h"

namespace velt::automation {
namespace {

using namespace test;

using ArrowheadsTest = StyledDimension;

TEST(Arrowheads, AreKnownByTheirBlocks) {
  EXPECT_EQ(0, arrowheadOfBlock(L""));
  EXPECT_EQ(3, arrowheadOfBlock(L"_Dot"));
  EXPECT_EQ(3, arrowheadOfBlock(L"DOT"));
  EXPECT_EQ(4, arrowheadOfBlock(L"_ArchTick"));
  EXPECT_EQ(19, arrowheadOfBlock(L"_NONE"));
  EXPECT_EQ(20, arrowheadOfBlock(L"My arrow"));
}

TEST(Arrowheads, HaveTheirBlocksUnderBothSpellings) {
  // clang-format off
  const auto drawing = Sample().tableRecord("BLOCK_RECORD", {{5, "52"}, {2, "_Dot"}}).tableRecord("BLOCK_RECORD", {{5, "53"}, {2, "ArchTick"}}).open();
  // clang-format on
  EXPECT_EQ(L"_Dot", blockOfArrowhead(*drawing, 3)->name);
  EXPECT_EQ(L"ArchTick", blockOfArrowhead(*drawing, 4)->name);
  for (const std::int32_t none : {-1, 0, 5, 20, 21})
    EXPECT_EQ(nullptr, blockOfArrowhead(*drawing, none)) << none;
}

TEST_F(ArrowheadsTest, ArrowheadsThatDifferHaveVariablesOfTheirOwn) {
  const Bound& made = dimension({{2, "Mine"}, {342, "52"}});
  EXPECT_EQ(S_OK, made.put(L"Arrowhead2Block", L"my ARROW").result);
  EXPECT_EQ("1070=343 1005=52 1070=173 1070=1 1070=344 1005=54", overridesOf(*drawing));
  EXPECT_EQ(3, made.integer(L"Arrowhead1Type"));
  EXPECT_EQ(20, made.integer(L"Arrowhead2Type"));
  EXPECT_EQ(S_OK, made.put(L"Arrowhead1Type", test::integer(0)).result);
  EXPECT_EQ("1070=343 1005=0 1070=173 1070=1 1070=344 1005=54", overridesOf(*drawing));
}

TEST_F(ArrowheadsTest, AnArrowheadInPlaceOfATickEndsTheTicks) {
  const Bound& made = dimension({{2, "Mine"}, {142, "2"}, {173, "1"}, {343, "52"}});
  EXPECT_EQ(S_OK, made.put(L"Arrowhead1Type", test::integer(5)).result);
  EXPECT_EQ("", overridesOf(*drawing)) << "ticks are that already";
  EXPECT_EQ(S_OK, made.put(L"Arrowhead1Type", test::integer(3)).result);
  EXPECT_EQ("1070=142 1040=0.0 1070=344 1005=53 1070=343 1005=52", overridesOf(*drawing));
  EXPECT_EQ(5, made.integer(L"Arrowhead2Type"));
}

TEST_F(ArrowheadsTest, OnlyBlocksOfTheDrawingCanBeArrowheads) {
  const Bound& made = dimension({{2, "Mine"}});
  EXPECT_EQ(E_FAIL, made.put(L"Arrowhead1Type", test::integer(6)).scode) << "no block _Open";
  EXPECT_EQ(E_INVALIDARG, made.put(L"Arrowhead1Type", test::integer(20)).scode)
      << "which block of the user's?";
  EXPECT_EQ(E_INVALIDARG, made.put(L"Arrowhead1Block", L"None").scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"Arrowhead1Block", L"*D1").scode);
  EXPECT_EQ("", overridesOf(*drawing));
}

}  // namespace
}  // namespace velt::automation
