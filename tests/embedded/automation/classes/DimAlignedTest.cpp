#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

TEST(DimAlignedTest, MeasuresTheDistanceOfItsPoints) {
  // clang-format off
  const auto drawing = Sample()
      .entity("DIMENSION", {{100, "AcDbDimension"}, {70, "33"}, {100, "AcDbAlignedDimension"}, {13, "1"}, {23, "2"}, {14, "4"}, {24, "6"}})
      .open();
  // clang-format on
  const Bound made(*drawing, 0);
  EXPECT_EQ(5, made.real(L"Measurement"));
  EXPECT_EQ(0, made.id(L"Rotation"));
  EXPECT_EQ(L"Aligned Dimension", made.text(L"EntityName"));
}

}  // namespace
}  // namespace velt::automation
