#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
TEST(DimDiametricTest, MeasuresAcrossTheCurve) {
  // clang-format off
  const auto drawing = Sample()
      .entity("DIMENSION", {{100, "AcDbDimension"}, {10, "1"}, {20, "1"}, {70, "35"}, {100, "AcDbDiametricDimension"}, {15, "7"}, {25, "9"}})
      .open();
  // clang-format on
  const Bound made(*drawing, 0);
  EXPECT_EQ(10, made.real(L"Measurement"));
  EXPECT_EQ((Numbers{1, 1, 0}), made.numbers(L"FarChordPoint"));
  EXPECT_EQ(L"Diametric Dimension", made.text(L"EntityName"));
}

}  // namespace
}  // namespace velt::automation
