#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;

class EndlessLine : public ::testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(EndlessLine, RunsFromItsBaseInADirection) {
  const auto& [type, subclass] = GetParam();
  // clang-format off
  const auto drawing = Sample()
      .entity(type, {{100, subclass}, {10, "1"}, {20, "2"}, {30, "3"}, {11, "0"}, {21, "2"}, {31, "0"}})
      .open();
  // clang-format on
  const Bound made(*drawing, 0);
  EXPECT_EQ((Numbers{1, 2, 3}), made.numbers(L"BasePoint"));
  EXPECT_EQ((Numbers{0, 1, 0}), made.numbers(L"DirectionVector"));
  EXPECT_EQ((Numbers{1, 3, 3}), made.numbers(L"SecondPoint"));
  EXPECT_EQ(S_OK, made.putElement(L"BasePoint", 0, 5));
  EXPECT_EQ((Numbers{5, 3, 3}), made.numbers(L"SecondPoint"));
}

INSTANTIATE_TEST_SUITE_P(Of, EndlessLine,
                         ::testing::Values(std::pair("RAY", "AcDbRay"), std::pair("XLINE", "AcDbXline")),
                         [](const auto& type) { return std::string(type.param.first); });

}  // namespace
}  // namespace velt::automation
