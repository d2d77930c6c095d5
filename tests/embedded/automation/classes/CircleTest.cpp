#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;

// clang-format off
TEST(CircleTest, ItsMeasuresFollowFromTheRadius) {
  const auto drawing = Sample()
      .entity("CIRCLE", {{100, "AcDbCircle"}, {10, "1"}, {20, "2"}, {30, "3"}, {40, "2.5"}, {39, "7"}})
      .open();
  const Bound circle(*drawing, 0);
  EXPECT_EQ((Numbers{1, 2, 3}), circle.numbers(L"Center"));
  EXPECT_EQ(2.5, circle.real(L"Radius"));
  EXPECT_EQ(5, circle.real(L"Diameter"));
  EXPECT_DOUBLE_EQ(5 * pi, circle.real(L"Circumference"));
  EXPECT_DOUBLE_EQ(6.25 * pi, circle.real(L"Area"));
  EXPECT_EQ(7, circle.real(L"Thickness"));
}

TEST(CircleTest, TheCenterIsOfferedInTheWorld) {
  const auto drawing = Sample()
      .entity("CIRCLE", {{100, "AcDbCircle"}, {10, "1"}, {20, "2"}, {30, "3"}, {40, "1"}, {210, "0"}, {220, "0"}, {230, "-1"}})
      .open();
  const Bound circle(*drawing, 0);
  EXPECT_EQ((Numbers{-1, 2, -3}), circle.numbers(L"Center"));
  EXPECT_EQ(-1, circle.element(L"Center", 0));
  EXPECT_EQ((Numbers{0, 0, -1}), circle.numbers(L"Normal"));
}
// clang-format on

}  // namespace
}  // namespace velt::automation
