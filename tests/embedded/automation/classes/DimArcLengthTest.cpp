#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;

TEST(DimArcLengthTest, MeasuresAlongTheSideThatTheDimensionLineIsOn) {
  // clang-format off
  const auto arc = [](const std::string& x, const std::string& y) {
    return Sample()
        .entity("ARC_DIMENSION", {{100, "AcDbDimension"}, {10, x}, {20, y}, {70, "37"}, {100, "AcDbArcDimension"},
                                  {13, "3"}, {23, "1"}, {14, "1"}, {24, "3"}, {15, "1"}, {25, "1"}})
        .open();
  };
  // clang-format on
  EXPECT_NEAR(pi, Bound(*arc("3", "3"), 0).real(L"Measurement"), 1e-14);
  EXPECT_NEAR(3 * pi, Bound(*arc("-1", "-1"), 0).real(L"Measurement"), 1e-14);
  EXPECT_EQ(0, Bound(*arc("3", "3"), 0).integer(L"Symbol"));
}

}  // namespace
}  // namespace velt::automation
