#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithTable() {
  // clang-format off
  return Sample()
      .entity("ACAD_TABLE", {{100, "AcDbBlockReference"}, {2, "*T1"}, {10, "1"}, {20, "2"}, {30, "3"}, {100, "AcDbTable"}, {342, "60"}, {11, "0"}, {21, "2"}, {31, "0"}, {91, "2"}, {92, "3"}, {141, "6"}, {141, "4"}, {142, "20"}, {142, "10"}, {142, "5"}, {1, "Parts"}, {1, "Bolt"}})
      .object("DICTIONARY", {{5, "61"}, {3, "Plain"}, {350, "60"}})
      .object("TABLESTYLE", {{5, "60"}, {330, "61"}})
      .open();
  // clang-format on
}

TEST(TableTest, IsAsLargeAsItsCells) {
  const auto drawing = drawingWithTable();
  const Bound made(*drawing, 0);
  EXPECT_EQ(L"Plain", made.text(L"StyleName"));
  EXPECT_EQ(2, made.integer(L"Rows"));
  EXPECT_EQ(3, made.integer(L"Columns"));
  EXPECT_EQ(35, made.real(L"Width"));
  EXPECT_EQ(10, made.real(L"Height"));
  EXPECT_EQ(L"Parts", made.text(L"FirstCell"));
  EXPECT_EQ((Numbers{1, 2, 3}), made.numbers(L"InsertionPoint"));
  EXPECT_EQ((Numbers{0, 1, 0}), made.numbers(L"DirectionVector"));
}

}  // namespace
}  // namespace velt::automation
