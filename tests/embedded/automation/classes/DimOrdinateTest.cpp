#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

std::unique_ptr<Drawing> ordinate(const std::string& flags, const std::string& turn = "0") {
  // clang-format off
  return Sample()
      .entity("DIMENSION", {{100, "AcDbDimension"}, {10, "1"}, {20, "2"}, {70, flags}, {51, turn}, {100, "AcDbOrdinateDimension"},
                            {13, "5"}, {23, "9"}, {14, "6"}, {24, "9"}})
      .open();
  // clang-format on
}

TEST(DimOrdinateTest, MeasuresAlongOneAxis) {
  EXPECT_EQ(7, Bound(*ordinate("38"), 0).real(L"Measurement"));
  EXPECT_FALSE(Bound(*ordinate("38"), 0).flag(L"AlongX"));
  EXPECT_EQ(4, Bound(*ordinate("102"), 0).real(L"Measurement"));
  EXPECT_TRUE(Bound(*ordinate("102"), 0).flag(L"AlongX"));
}

TEST(DimOrdinateTest, TheAxesMayBeTurned) {
  EXPECT_NEAR(7, Bound(*ordinate("102", "-90"), 0).real(L"Measurement"), 1e-14);
}

TEST(DimOrdinateTest, HasNoArrowheads) {
  const auto drawing = ordinate("38");
  EXPECT_EQ(0, Bound(*drawing, 0).id(L"ArrowheadSize"));
}

}  // namespace
}  // namespace velt::automation
