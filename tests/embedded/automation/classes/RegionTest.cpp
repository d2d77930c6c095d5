#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

std::unique_ptr<Drawing> sample() {
  // clang-format off
  return Sample()
      .entity("REGION", {{100, "AcDbModelerGeometry"}, {70, "1"}, {1, "mogoo"}, {1, "kl m o"}})
      .open();
  // clang-format on
}

TEST(RegionTest, SaysWhyItsAreaCannotBeTold) {
  const auto drawing = sample();
  const Bound made(*drawing, 0);
  const Answer area = made.get(L"Area");
  EXPECT_EQ(DISP_E_EXCEPTION, area.result);
  EXPECT_NE(std::wstring::npos, area.description.find(L"modeller"));
  EXPECT_EQ(L"2 lines", made.text(L"ModelData"));
}

}  // namespace
}  // namespace velt::automation
