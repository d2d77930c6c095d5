#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;

TEST(PointTest, IsWhereItIsStored) {
  const auto drawing =
      Sample().entity("POINT", {{100, "AcDbPoint"}, {10, "1"}, {20, "2"}, {30, "3"}, {39, "4"}}).open();
  const Bound point(*drawing, 0);
  EXPECT_EQ((Numbers{1, 2, 3}), point.numbers(L"Coordinates"));
  EXPECT_EQ(4, point.real(L"Thickness"));
  EXPECT_EQ((Numbers{0, 0, 1}), point.numbers(L"Normal"));
  EXPECT_EQ((std::vector<std::wstring>{L"Position X", L"Position Y", L"Position Z"}),
            point.elementLabels(L"Coordinates"));
}

}  // namespace
}  // namespace velt::automation
