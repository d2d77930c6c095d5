#include "view/Colors.h"

#include <gtest/gtest.h>

namespace velt::view {
namespace {

TEST(ViewColors, TheFirstNineAreThePlainOnesAndSevenIsTheForeground) {
  EXPECT_EQ(inkOfIndex(1), inkOfRgb(0xFF0000));
  EXPECT_EQ(inkOfIndex(5), inkOfRgb(0x0000FF));
  EXPECT_EQ(inkOfIndex(8), inkOfRgb(0x808080));
  EXPECT_EQ(inkOfIndex(7).kind, Ink::Kind::Foreground);
}

TEST(ViewColors, TheOthersAreACircleOfHues) {
  EXPECT_EQ(inkOfIndex(10), inkOfRgb(0xFF0000));
  EXPECT_EQ(inkOfIndex(11), inkOfRgb(0xFF7F7F));
  EXPECT_EQ(inkOfIndex(12), inkOfRgb(0xA50000));
  EXPECT_EQ(inkOfIndex(23), inkOfRgb(0xA56752));
  EXPECT_EQ(inkOfIndex(30), inkOfRgb(0xFF7F00));
  EXPECT_EQ(inkOfIndex(249), inkOfRgb(0x261317));
}

TEST(ViewColors, TheLastSixAreGreys) {
  for (std::uint32_t index = 250; index < 256; ++index) {
    const Ink ink = inkOfIndex(index);
    EXPECT_EQ(ink.red, ink.green);
    EXPECT_EQ(ink.red, ink.blue);
  }
}

TEST(ViewColors, AMixtureIsHalfOfEach) {
  EXPECT_EQ(mixed(inkOfRgb(0xFF0000), inkOfRgb(0x0000FF)), inkOfRgb(0x7F007F));
  EXPECT_EQ(mixed({}, {}), inkOfRgb(0x808080));
}

}  // namespace
}  // namespace velt::view
