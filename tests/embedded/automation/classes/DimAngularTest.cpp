#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;

// Two lines that cross in (2, 1): along X, and at 45 degrees.
std::unique_ptr<Drawing> angleMeasuredAt(const std::string& x, const std::string& y, const std::string& endX = "5",
                                    const std::string& endY = "4") {
  // clang-format off
  return Sample()
      .entity("DIMENSION", {{100, "AcDbDimension"}, {10, endX}, {20, endY}, {70, "34"}, {100, "AcDb2LineAngularDimension"},
                            {13, "3"}, {23, "1"}, {14, "7"}, {24, "1"}, {15, "3"}, {25, "2"}, {16, x}, {26, y}})
      .open();
  // clang-format on
}

TEST(DimAngularTest, MeasuresTheAngleThatTheArcRunsThrough) {
  EXPECT_NEAR(pi / 4, Bound(*angleMeasuredAt("6", "2"), 0).real(L"Measurement"), 1e-14);
  EXPECT_NEAR(pi * 3 / 4, Bound(*angleMeasuredAt("2", "4"), 0).real(L"Measurement"), 1e-14);
  EXPECT_NEAR(pi / 4, Bound(*angleMeasuredAt("-4", "0"), 0).real(L"Measurement"), 1e-14);
  EXPECT_NEAR(pi * 3 / 4, Bound(*angleMeasuredAt("2", "-4"), 0).real(L"Measurement"), 1e-14);
}

TEST(DimAngularTest, ParallelLinesHaveNoAngle) {
  const auto drawing = angleMeasuredAt("6", "2", "9", "2");
  EXPECT_EQ(DISP_E_EXCEPTION, Bound(*drawing, 0).get(L"Measurement").result);
}

TEST(DimAngularTest, HasUnitsOfAnglesAndNoOthers) {
  const auto drawing = angleMeasuredAt("6", "2");
  const Bound made(*drawing, 0);
  EXPECT_EQ(0, made.integer(L"AngleFormat"));
  EXPECT_EQ(0, made.integer(L"AnglePrecision"));
  EXPECT_EQ(0, made.id(L"Precision"));
  EXPECT_EQ((std::vector<double>{6, 2, 0}), made.numbers(L"DimArcPoint"));
}

}  // namespace
}  // namespace velt::automation
