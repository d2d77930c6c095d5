#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> sample() {
  // clang-format off
  return Sample()
      .entity("XLINE", {{100, "AcDbXline"}, {10, "1"}, {20, "2"}, {30, "3"}, {11, "0"}, {21, "2"}, {31, "0"}})
      .open();
  // clang-format on
}

TEST(XLineTest, RunsFromItsBaseInADirection) {
  const auto drawing = sample();
  const Bound made(*drawing, 0);
  EXPECT_EQ((Numbers{1, 2, 3}), made.numbers(L"BasePoint"));
  EXPECT_EQ((Numbers{0, 1, 0}), made.numbers(L"DirectionVector"));
  EXPECT_EQ((Numbers{1, 3, 3}), made.numbers(L"SecondPoint"));
}

}  // namespace
}  // namespace velt::automation
