#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithWipeout() {
  // clang-format off
  return Sample()
      .entity("WIPEOUT", {{100, "AcDbWipeout"}, {10, "100"}, {20, "200"}, {30, "0"}, {11, "10"}, {21, "0"}, {31, "0"}, {12, "0"}, {22, "20"}, {32, "0"}, {13, "1"}, {23, "1"}, {280, "1"}, {14, "-0.5"}, {24, "0.5"}, {14, "0.5"}, {24, "-0.5"}})
      .open();
  // clang-format on
}

TEST(WipeoutTest, HasItsBoundaryInTheWorld) {
  const auto drawing = drawingWithWipeout();
  const Bound made(*drawing, 0);
  EXPECT_EQ(10, made.real(L"Width"));
  EXPECT_EQ(20, made.real(L"Height"));
  EXPECT_EQ((Numbers{100, 200, 0, 110, 220, 0}), made.numbers(L"Vertex")) << "pixels count downwards";
  EXPECT_EQ(220, made.element(L"Vertex", 4));
  EXPECT_TRUE(made.flag(L"ClippingEnabled"));
}

}  // namespace
}  // namespace velt::automation
