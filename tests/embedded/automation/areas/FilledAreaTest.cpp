#include <gtest/gtest.h>

#include <string>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;

class FilledArea : public ::testing::TestWithParam<const char*> {
 protected:
  std::unique_ptr<Drawing> drawing =
      // clang-format off
      Sample()
          .entity(GetParam(), {{100, "AcDbTrace"}, {10, "1"}, {20, "2"}, {30, "3"}, {11, "4"}, {21, "2"}, {31, "3"}, {12, "1"}, {22, "5"}, {32, "3"}, {39, "7"}, {210, "0"}, {220, "0"}, {230, "-1"}})
          .open();
  // clang-format on
  Bound made{*drawing, 0};
};

TEST_P(FilledArea, IsOfferedInTheWorld) {
  EXPECT_EQ((Numbers{-1, 2, -3}), made.numbers(L"Corner1"));
  EXPECT_EQ(made.numbers(L"Corner3"), made.numbers(L"Corner4")) << "a triangle";
  EXPECT_EQ(3, made.real(L"Elevation"));
  EXPECT_EQ(7, made.real(L"Thickness"));
}

TEST_P(FilledArea, FollowsACornerThatLeavesItsPlane) {
  EXPECT_EQ(S_OK, made.putElement(L"Corner2", 2, -9));
  EXPECT_EQ(9, made.real(L"Elevation"));
  EXPECT_EQ((Numbers{-1, 2, -9}), made.numbers(L"Corner1"));
}

INSTANTIATE_TEST_SUITE_P(Of, FilledArea, ::testing::Values("SOLID", "TRACE"),
                         [](const auto& type) { return std::string(type.param); });

}  // namespace
}  // namespace velt::automation
