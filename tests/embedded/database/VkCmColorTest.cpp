#include "host/database/VkCmColor.h"

#include <gtest/gtest.h>

namespace {

VkCmColor colorOf(std::uint32_t value, const wchar_t* name = nullptr, const wchar_t* book = nullptr) {
  VkCmColor color;
  color.setColor(value);
  color.setNames(name, book);
  return color;
}

TEST(VkCmColor, ADefaultColorIsUnequalToEveryColorThatALayerCanHave) {
  const VkCmColor unset;
  for (std::uint32_t index = 1; index < 256; ++index)
    EXPECT_NE(unset, colorOf(0xC3000000 | index));
  EXPECT_NE(unset, colorOf(0xC2000000));
  EXPECT_NE(unset, colorOf(0xC0000000));
  EXPECT_EQ(unset, VkCmColor());
}

TEST(VkCmColor, ColorsAreEqualWhenTheValueAndBothNamesAre) {
  const VkCmColor color = colorOf(0xC2123456, L"RAL 1006", L"RAL CLASSIC");

  EXPECT_EQ(color, colorOf(0xC2123456, L"RAL 1006", L"RAL CLASSIC"));
  EXPECT_FALSE(color != colorOf(0xC2123456, L"RAL 1006", L"RAL CLASSIC"));
  EXPECT_NE(color, colorOf(0xC2123457, L"RAL 1006", L"RAL CLASSIC"));
  EXPECT_NE(color, colorOf(0xC2123456, L"RAL 1007", L"RAL CLASSIC"));
  EXPECT_NE(color, colorOf(0xC2123456, L"RAL 1006", L"RAL classic"));
  EXPECT_NE(color, colorOf(0xC2123456, L"RAL 1006"));
}

TEST(VkCmColor, NoNameAndTheEmptyNameAreTheSame) {
  EXPECT_EQ(colorOf(1, nullptr, nullptr), colorOf(1, L"", L""));
  EXPECT_STREQ(L"", colorOf(1).colorName());
  EXPECT_STREQ(L"", colorOf(1).bookName());
}

TEST(VkCmColor, ACopyIsIndependent) {
  // given
  VkCmColor original = colorOf(0xC2123456, L"red", L"book");
  VkCmColor constructed = original;
  VkCmColor assigned = colorOf(7, L"old", L"older");
  assigned = original;
  // when
  original.setNames(L"blue", nullptr);
  original.setColor(5);
  // then
  for (const VkCmColor* copy : {&constructed, &assigned}) {
    EXPECT_EQ(0xC2123456, copy->color());
    EXPECT_STREQ(L"red", copy->colorName());
    EXPECT_STREQ(L"book", copy->bookName());
  }
}

TEST(VkCmColor, AssigningAColorToItselfKeepsIt) {
  VkCmColor color = colorOf(5, L"red", L"book");
  const VkCmColor& same = color;
  color = same;
  EXPECT_EQ(colorOf(5, L"red", L"book"), color);
}

TEST(VkCmColor, ItsOwnNamesMayBeSetAgainTheOtherWayRound) {
  VkCmColor color = colorOf(5, L"red", L"book");
  color.setNames(color.bookName(), color.colorName());
  EXPECT_EQ(colorOf(5, L"book", L"red"), color);
}

TEST(VkCmColor, OnlyTheMethodTellsThatAColorIsByLayer) {
  EXPECT_TRUE(colorOf(0xC0000000).isByLayer());
  EXPECT_TRUE(colorOf(0xC0000100).isByLayer());
  EXPECT_FALSE(colorOf(0xC1000000).isByLayer());
  EXPECT_FALSE(colorOf(0xC3000001).isByLayer());
  EXPECT_FALSE(VkCmColor().isByLayer());
}

}  // namespace
