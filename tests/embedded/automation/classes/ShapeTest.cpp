#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
std::unique_ptr<Drawing> drawingWithShape() {
  // clang-format off
  return Sample()
      .entity("SHAPE", {{100, "AcDbShape"}, {10, "1"}, {20, "2"}, {30, "0"}, {40, "3"}, {2, "SIGN"}, {50, "90"}, {41, "2"}, {51, "15"}})
      .open();
  // clang-format on
}

TEST(ShapeTest, IsASignOfAFile) {
  const auto drawing = drawingWithShape();
  const Bound made(*drawing, 0);
  EXPECT_EQ(L"SIGN", made.text(L"Name"));
  EXPECT_EQ(3, made.real(L"Size"));
  EXPECT_EQ(2, made.real(L"ScaleFactor"));
  EXPECT_DOUBLE_EQ(pi / 2, made.real(L"Rotation"));
  EXPECT_DOUBLE_EQ(pi / 12, made.real(L"ObliqueAngle"));
  EXPECT_EQ((std::vector<double>{1, 2, 0}), made.numbers(L"InsertionPoint"));
}

}  // namespace
}  // namespace velt::automation
