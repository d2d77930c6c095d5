#include "embedded/automation/objects/ColorValue.h"

#include <gtest/gtest.h>

#include "embedded/automation/objects/ColorObject.h"
#include "embedded/automation/objects/HyperlinksObject.h"
#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

std::uint32_t colorNamed(const wchar_t* name) {
  return colorFrom(Value(std::wstring(name))).color();
}

HRESULT refusalOfColor(Value value) {
  return refusalOf([&] { static_cast<void>(colorFrom(value)); });
}

VkCmColor colored(std::uint32_t value) {
  VkCmColor color;
  color.setColor(value);
  return color;
}

class ColorValueTest : public ::testing::Test {
 protected:
  ColorValueTest() { makeRegistry(); }
};

TEST_F(ColorValueTest, AnIndexIsAColor) {
  EXPECT_EQ(0xC1000000, colorFrom(Value(0)).color());
  EXPECT_EQ(0xC3000001, colorFrom(Value(1)).color());
  EXPECT_EQ(0xC30000FF, colorFrom(Value(255)).color());
  EXPECT_EQ(0xC0000000, colorFrom(Value(256)).color());
  EXPECT_EQ(E_INVALIDARG, refusalOfColor(Value(-1)));
  EXPECT_EQ(E_INVALIDARG, refusalOfColor(Value(257)));
}

TEST_F(ColorValueTest, ColorsHaveNames) {
  EXPECT_EQ(0xC3000001, colorNamed(L"Red"));
  EXPECT_EQ(0xC3000006, colorNamed(L" MAGENTA "));
  EXPECT_EQ(0xC0000000, colorNamed(L"bylayer"));
  EXPECT_EQ(0xC1000000, colorNamed(L"ByBlock"));
  EXPECT_EQ(0xC3000021, colorNamed(L"33"));
}

TEST_F(ColorValueTest, ATrueColorIsGivenByItsParts) {
  EXPECT_EQ(0xC2102030, colorNamed(L"16,32,48"));
  EXPECT_EQ(0xC200FF00, colorNamed(L" 0 , 255 , 0 "));
  for (const wchar_t* wrong :
       {L"16,32", L"16,32,256", L"16,32,48,1", L"1,,2", L"1,2,-3", L"1,2,x", L",", L"", L"Mauve"})
    EXPECT_EQ(E_INVALIDARG, refusalOfColor(Value(std::wstring(wrong)))) << wrong;
}

TEST_F(ColorValueTest, AnObjectGivesItsColorWithItsNames) {
  VkCmColor color = colored(0xC2102030);
  color.setNames(L"Ocean", L"SEAS");
  EXPECT_TRUE(color == colorFrom(Value(ColorObject::make(color))));
}

TEST_F(ColorValueTest, WhatNoEntityCanBeColoredWithIsRefused) {
  for (const std::uint32_t value : {0U, 0xC8000000U, 0xC3000000U, 0xC3000100U, 0xC4000000U})
    EXPECT_EQ(E_INVALIDARG, refusalOfColor(Value(ColorObject::make(colored(value))))) << value;
  EXPECT_EQ(E_INVALIDARG, refusalOfColor(Value(OwnedDispatch())));
  EXPECT_EQ(E_NOINTERFACE, refusalOfColor(Value(HyperlinksObject::make(VkDbObjectId::kNull))));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, refusalOfColor(Value(true)));
}

}  // namespace
}  // namespace velt::automation
