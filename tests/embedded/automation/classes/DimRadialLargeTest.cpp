#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
TEST(DimRadialLargeTest, MeasuresFromTheTrueCenter) {
  // clang-format off
  const auto drawing = Sample()
      .entity("LARGE_RADIAL_DIMENSION", {{100, "AcDbDimension"}, {10, "1"}, {20, "1"}, {70, "169"}, {100, "AcDbRadialDimensionLarge"},
                                         {13, "2"}, {23, "2"}, {14, "3"}, {24, "3"}, {15, "4"}, {25, "5"},
                                         {1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1070, "50"}, {1040, "0.5"}, {1002, "}"}})
      .open();
  // clang-format on
  const Bound made(*drawing, 0);
  EXPECT_EQ(5, made.real(L"Measurement"));
  EXPECT_EQ(0.5, made.real(L"JogAngle"));
  EXPECT_EQ((Numbers{2, 2, 0}), made.numbers(L"OverrideCenter"));
  EXPECT_EQ((Numbers{3, 3, 0}), made.numbers(L"JogPoint"));
}

}  // namespace
}  // namespace velt::automation
