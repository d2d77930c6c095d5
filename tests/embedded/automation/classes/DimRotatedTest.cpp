#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;
TEST(DimRotatedTest, MeasuresAlongItsDirection) {
  // clang-format off
  const auto drawing = Sample()
      .entity("DIMENSION", {{100, "AcDbDimension"}, {10, "9"}, {20, "5"}, {70, "32"}, {100, "AcDbAlignedDimension"}, {13, "1"}, {23, "2"}, {14, "4"}, {24, "6"}, {50, "90"}})
      .entity("DIMENSION", {{70, "160"}, {13, "1"}, {23, "2"}, {14, "4"}, {24, "6"}})
      .entity("DIMENSION", {{70, "32"}, {13, "1"}, {23, "2"}, {14, "4"}, {24, "6"}, {50, "30"}})
      .open();
  // clang-format on
  const Bound upright(*drawing, 0);
  EXPECT_EQ(4, upright.real(L"Measurement"));
  EXPECT_EQ((Numbers{1, 2, 0}), upright.numbers(L"ExtLine1Point"));
  EXPECT_EQ((Numbers{4, 6, 0}), upright.numbers(L"ExtLine2Point"));
  EXPECT_EQ((Numbers{9, 5, 0}), upright.numbers(L"DimLinePoint"));
  EXPECT_DOUBLE_EQ(pi / 2, upright.real(L"Rotation"));
  EXPECT_EQ(L"Rotated Dimension", upright.text(L"EntityName"));
  const Bound old(*drawing, 1);
  EXPECT_EQ(3, old.real(L"Measurement"));
  EXPECT_NEAR(1.5 * std::numbers::sqrt3 + 2, Bound(*drawing, 2).real(L"Measurement"), 1e-12);
}

TEST(DimRotatedTest, TellsTheMeasurementInTheScaleOfItsStyle) {
  // clang-format off
  const auto drawing = Sample()
      .tableRecord("DIMSTYLE", {{2, "Mine"}, {144, "2.5"}})
      .tableRecord("DIMSTYLE", {{2, "Paper"}, {144, "-2.5"}})
      .entity("DIMENSION", {{3, "Mine"}, {70, "32"}, {13, "1"}, {14, "5"}})
      .entity("DIMENSION", {{3, "Paper"}, {70, "32"}, {13, "1"}, {14, "5"}})
      .entity("DIMENSION", {{67, "1"}, {3, "Paper"}, {70, "32"}, {13, "1"}, {14, "5"}})
      .open();
  // clang-format on
  EXPECT_EQ(10, Bound(*drawing, 0).real(L"Measurement"));
  EXPECT_EQ(4, Bound(*drawing, 1).real(L"Measurement")) << "counts on sheets only";
  EXPECT_EQ(10, Bound(*drawing, 2).real(L"Measurement"));
}

}  // namespace
}  // namespace velt::automation
