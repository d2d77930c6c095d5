#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;

class BlockReferenceTest : public ::testing::Test {
 protected:
  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .tableRecord("BLOCK_RECORD", {{5, "20"}, {2, "DOOR"}, {100, "AcDbBlockTableRecord"}, {70, "4"}})
      .block({{2, "DOOR"}})
      .entity("INSERT", {{100, "AcDbBlockReference"}, {66, "1"}, {2, "DOOR"}, {10, "1"}, {20, "2"}, {30, "3"},
                         {41, "2"}, {42, "-3"}, {43, "4"}, {50, "90"}})
      .entity("ATTRIB", {{2, "NO"}})
      .entity("SEQEND")
      .entity("INSERT", {{100, "AcDbMInsertBlock"}, {2, "DOOR"}, {10, "1"}, {20, "2"}, {70, "3"}, {71, "5"}, {44, "10"}, {45, "20"},
                         {210, "0"}, {220, "0"}, {230, "-1"}})
      .entity("INSERT", {{2, "LOST"}})
      .open();
  // clang-format on
};

TEST_F(BlockReferenceTest, TellsWhatIsStored) {
  const Bound made(*drawing, 0);
  EXPECT_EQ((Numbers{1, 2, 3}), made.numbers(L"InsertionPoint"));
  EXPECT_EQ(2, made.real(L"XScaleFactor"));
  EXPECT_EQ(-3, made.real(L"YScaleFactor"));
  EXPECT_EQ(4, made.real(L"ZScaleFactor"));
  EXPECT_NEAR(pi / 2, made.real(L"Rotation"), 1e-15);
  EXPECT_EQ(L"DOOR", made.text(L"Name"));
  EXPECT_EQ(L"DOOR", made.text(L"EffectiveName"));
  EXPECT_TRUE(made.flag(L"HasAttributes"));
  EXPECT_EQ(1, made.integer(L"Columns"));
  EXPECT_EQ(4, made.integer(L"InsUnits")) << "millimetres, as the block's record says";
}

TEST_F(BlockReferenceTest, OneThatRepeatsItsBlockIsReadBehindItsOwnMarker) {
  const Bound made(*drawing, 1);
  EXPECT_EQ(3, made.integer(L"Columns"));
  EXPECT_EQ(5, made.integer(L"Rows"));
  EXPECT_EQ(10, made.real(L"ColumnSpacing"));
  EXPECT_EQ(20, made.real(L"RowSpacing"));
  EXPECT_EQ((Numbers{-1, 2, 0}), made.numbers(L"InsertionPoint"));
  EXPECT_FALSE(made.flag(L"HasAttributes"));
}

TEST_F(BlockReferenceTest, ABlockThatIsNotThereLeavesTheReferenceReadable) {
  const Bound made(*drawing, 2);
  EXPECT_EQ(L"LOST", made.text(L"Name"));
  EXPECT_EQ(L"LOST", made.text(L"EffectiveName"));
  EXPECT_EQ(0, made.integer(L"InsUnits"));
  EXPECT_EQ(1, made.real(L"XScaleFactor"));
}

TEST_F(BlockReferenceTest, ADynamicBlockIsNamedByItsDefinition) {
  // clang-format off
  drawing = Sample()
      .tableRecord("BLOCK_RECORD", {{5, "20"}, {2, "DOOR"}})
      .tableRecord("BLOCK_RECORD", {{5, "21"}, {2, "*U1"}, {1001, "AcDbBlockRepBTag"}, {1070, "1"}, {1005, "20"}})
      .block({{2, "DOOR"}})
      .block({{2, "*U1"}})
      .entity("INSERT", {{100, "AcDbBlockReference"}, {2, "*U1"}})
      .open();
  // clang-format on
  const Bound made(*drawing, 0);
  EXPECT_EQ(L"*U1", made.text(L"Name"));
  EXPECT_EQ(L"DOOR", made.text(L"EffectiveName"));
}

}  // namespace
}  // namespace velt::automation
