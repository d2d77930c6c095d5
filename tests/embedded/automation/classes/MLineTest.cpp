#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithMLine() {
  // clang-format off
  return Sample()
      .entity("MLINE", {{100, "AcDbMline"}, {2, "WALLS"}, {40, "2.5"}, {70, "1"}, {71, "3"}, {10, "1"}, {20, "2"}, {30, "3"}, {11, "1"}, {21, "2"}, {31, "3"}, {12, "1"}, {22, "0"}, {32, "0"}, {41, "7"}, {11, "4"}, {21, "5"}, {31, "6"}})
      .open();
  // clang-format on
}

TEST(MLineTest, RunsThroughItsVertices) {
  const auto drawing = drawingWithMLine();
  const Bound made(*drawing, 0);
  EXPECT_EQ(L"WALLS", made.text(L"StyleName"));
  EXPECT_EQ(2.5, made.real(L"Scale"));
  EXPECT_EQ(1, made.integer(L"Justification"));
  EXPECT_TRUE(made.flag(L"Closed"));
  EXPECT_EQ((Numbers{1, 2, 3, 4, 5, 6}), made.numbers(L"Vertex"));
  EXPECT_EQ(5, made.element(L"Vertex", 4));
}

}  // namespace
}  // namespace velt::automation
