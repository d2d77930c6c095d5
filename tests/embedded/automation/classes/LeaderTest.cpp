#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithLeader() {
  // clang-format off
  return Sample()
      .tableRecord("DIMSTYLE", {{2, "Mine"}, {41, "3"}, {176, "2"}, {147, "-0.5"}})
      .tableRecord("BLOCK_RECORD", {{5, "52"}, {2, "_Dot"}})
      .entity("LEADER", {{100, "AcDbLeader"}, {3, "Mine"}, {71, "1"}, {72, "1"}, {73, "0"}, {75, "1"}, {76, "2"}, {10, "1"}, {20, "2"}, {30, "3"}, {10, "4"}, {20, "5"}, {30, "6"}, {1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1070, "341"}, {1005, "52"}, {1002, "}"}})
      .open();
  // clang-format on
}

TEST(LeaderTest, TakesItsSizesFromItsStyle) {
  const auto drawing = drawingWithLeader();
  const Bound made(*drawing, 0);
  EXPECT_EQ(3, made.integer(L"Type"));
  EXPECT_EQ(L"Mine", made.text(L"DimStyle"));
  EXPECT_EQ(0, made.integer(L"Annotation"));
  EXPECT_EQ(3, made.integer(L"Arrow"));
  EXPECT_EQ(3, made.real(L"ArrowheadSize"));
  EXPECT_EQ(2, made.integer(L"DimensionLineColor"));
  EXPECT_EQ(0.5, made.real(L"TextGap"));
  EXPECT_EQ((Numbers{1, 2, 3, 4, 5, 6}), made.numbers(L"Vertex"));
  EXPECT_EQ(6, made.element(L"Vertex", 5));
  EXPECT_TRUE(made.flag(L"HasHookLine"));
  EXPECT_EQ(S_OK, made.put(L"Type", test::integer(0)).result);
  EXPECT_EQ(0, made.integer(L"Type"));
}

}  // namespace
}  // namespace velt::automation
