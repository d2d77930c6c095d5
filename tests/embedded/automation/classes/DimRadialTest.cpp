#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
TEST(DimRadialTest, MeasuresFromTheCenterToTheCurve) {
  // clang-format off
  const auto drawing = Sample()
      .entity("DIMENSION", {{100, "AcDbDimension"}, {10, "1"}, {20, "1"}, {70, "36"}, {100, "AcDbRadialDimension"}, {15, "4"}, {25, "5"}, {40, "2"}})
      .open();
  // clang-format on
  const Bound made(*drawing, 0);
  EXPECT_EQ(5, made.real(L"Measurement"));
  EXPECT_EQ(2, made.real(L"LeaderLength"));
  EXPECT_EQ((Numbers{1, 1, 0}), made.numbers(L"Center"));
  EXPECT_EQ(0, made.integer(L"Arrow"));
  EXPECT_EQ(0, made.id(L"Arrowhead1Type")) << "it has one end only";
  EXPECT_EQ(L"Radial Dimension", made.text(L"EntityName"));
}

}  // namespace
}  // namespace velt::automation
