#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
std::unique_ptr<Drawing> drawingWithRasterImage() {
  // clang-format off
  return Sample()
      .entity("IMAGE", {{100, "AcDbRasterImage"}, {10, "1"}, {20, "2"}, {30, "3"}, {11, "0"}, {21, "0.1"}, {31, "0"}, {12, "-0.2"}, {22, "0"}, {32, "0"}, {13, "200"}, {23, "100"}, {340, "60"}, {70, "9"}, {280, "1"}, {281, "60"}, {282, "40"}, {283, "10"}})
      .object("DICTIONARY", {{5, "61"}, {3, "Facade"}, {350, "60"}})
      .object("IMAGEDEF", {{5, "60"}, {330, "61"}, {100, "AcDbRasterImageDef"}, {1, "facade.png"}})
      .open();
  // clang-format on
}

TEST(RasterImageTest, IsAsLargeAsItsPixels) {
  const auto drawing = drawingWithRasterImage();
  const Bound made(*drawing, 0);
  EXPECT_DOUBLE_EQ(20, made.real(L"Width"));
  EXPECT_DOUBLE_EQ(20, made.real(L"Height"));
  EXPECT_DOUBLE_EQ(pi / 2, made.real(L"Rotation"));
  EXPECT_EQ(L"Facade", made.text(L"Name"));
  EXPECT_EQ(L"facade.png", made.text(L"ImageFile"));
  EXPECT_TRUE(made.flag(L"ImageVisibility"));
  EXPECT_TRUE(made.flag(L"Transparency"));
  EXPECT_TRUE(made.flag(L"ClippingEnabled"));
  EXPECT_EQ(60, made.integer(L"Brightness"));
  EXPECT_EQ(40, made.integer(L"Contrast"));
  EXPECT_EQ(10, made.integer(L"Fade"));
  EXPECT_EQ(DISP_E_EXCEPTION, made.put(L"Fade", test::integer(101)).result);
  EXPECT_EQ(S_OK, made.put(L"Fade", test::integer(100)).result);
  EXPECT_EQ(100, made.integer(L"Fade"));
}

}  // namespace
}  // namespace velt::automation
