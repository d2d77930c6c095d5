#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;

std::unique_ptr<Drawing> threePointsMeasuredAt(const std::string& x, const std::string& y) {
  // clang-format off
  return Sample()
      .entity("DIMENSION", {{100, "AcDbDimension"}, {10, x}, {20, y}, {70, "37"}, {100, "AcDb3PointAngularDimension"},
                            {13, "3"}, {23, "1"}, {14, "1"}, {24, "3"}, {15, "1"}, {25, "1"}})
      .open();
  // clang-format on
}

TEST(Dim3PointAngularTest, MeasuresTheSideThatTheArcIsOn) {
  EXPECT_NEAR(pi / 2, Bound(*threePointsMeasuredAt("2", "2"), 0).real(L"Measurement"), 1e-14);
  EXPECT_NEAR(pi * 3 / 2, Bound(*threePointsMeasuredAt("0", "0"), 0).real(L"Measurement"), 1e-14);
  const auto drawing = threePointsMeasuredAt("2", "2");
  EXPECT_EQ((std::vector<double>{1, 1, 0}), Bound(*drawing, 0).numbers(L"AngleVertex"));
}

}  // namespace
}  // namespace velt::automation
