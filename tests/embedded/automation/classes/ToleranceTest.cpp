#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithTolerance() {
  // clang-format off
  return Sample()
      .tableRecord("DIMSTYLE", {{2, "Mine"}, {140, "3"}, {178, "2"}})
      .entity("TOLERANCE", {{100, "AcDbFcf"}, {3, "Mine"}, {10, "1"}, {20, "2"}, {30, "3"}, {1, "{\\Fgdt;j}%%v"}, {11, "0"}, {21, "2"}, {31, "0"}})
      .open();
  // clang-format on
}

TEST(ToleranceTest, TakesItsSizesFromItsStyle) {
  const auto drawing = drawingWithTolerance();
  const Bound made(*drawing, 0);
  EXPECT_EQ(L"{\\Fgdt;j}%%v", made.text(L"TextString"));
  EXPECT_EQ(3, made.real(L"TextHeight"));
  EXPECT_EQ(2, made.integer(L"TextColor"));
  EXPECT_EQ((Numbers{0, 1, 0}), made.numbers(L"DirectionVector"));
  EXPECT_EQ((Numbers{1, 2, 3}), made.numbers(L"InsertionPoint"));
  EXPECT_EQ(L"Standard", made.text(L"TextStyle"));
}

}  // namespace
}  // namespace velt::automation
