#include "palette/text/ObjectText.h"

#include "tests/palette/Stage.h"
#include "tests/support/ToyColor.h"
#include "tests/support/ToyHyperlinks.h"

namespace velt::palette {
namespace {

using toys::ToyColor;

class ObjectText : public Stage {
 protected:
  std::string colorText(std::uint32_t value) {
    const ToyColor color(host, "color", value);
    return objectText(color.dispatch());
  }
};

TEST_F(ObjectText, ColorsWithANameAreCalledByIt) {
  EXPECT_EQ(colorText(ToyColor::byLayer), "ByLayer");
  EXPECT_EQ(colorText(0xC1000000), "ByBlock");
  EXPECT_EQ(colorText(ToyColor::indexed(1)), "Red");
  EXPECT_EQ(colorText(0xC8000000), "None");
}

TEST_F(ObjectText, OtherColorsAreTheirIndexOrTheirParts) {
  EXPECT_EQ(colorText(ToyColor::indexed(30)), "30");
  EXPECT_EQ(colorText(0xC2FF8001), "255,128,1");
  EXPECT_EQ(colorText(0x12345678), "color 12345678");
}

TEST_F(ObjectText, AColorOfABookIsBookAndName) {
  ToyColor color(host, "color", 0xC2FF8001);
  color.colorName = L"Rust";
  EXPECT_EQ(objectText(color.dispatch()), "Rust");
  color.bookName = L"Metals";
  EXPECT_EQ(objectText(color.dispatch()), "Metals$Rust");
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(ObjectText, WhatAFailingCallLeftIsNotAName) {
  ToyColor color(host, "color", ToyColor::indexed(1));
  color.colorName = L"Rust";
  host.on("get_ColorName").leaveThenFail();
  EXPECT_EQ(objectText(color.dispatch()), "Red");
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(ObjectText, NullIsEmptyAndAnyOtherObjectIsSaidToBeOne) {
  const toys::ToyObject other(host, "other");
  EXPECT_EQ(objectText(nullptr), "");
  EXPECT_EQ(objectText(other.dispatch()), "(object)");
}

}  // namespace
}  // namespace velt::palette
