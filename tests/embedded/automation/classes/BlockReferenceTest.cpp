#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Edits.h"

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

TEST_F(BlockReferenceTest, OneThatRepeatsItsBlockIsReadAfterItsOwnMarker) {
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

// --- putting ---

class BlockReferencePutTest : public ::testing::Test {
 protected:
  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .entity("INSERT", {{66, "1"}, {2, "DOOR"}, {10, "1.0"}, {20, "2.0"}, {50, "0.0"}})
      .entity("ATTRIB", {{2, "NO"}, {10, "3.0"}, {20, "2.0"}, {50, "10.0"}})
      .entity("ATTRIB", {{2, "OF"}, {10, "1.0"}, {20, "2.0"}})
      .entity("SEQEND")
      .entity("INSERT", {{2, "DOOR"}, {10, "1.0"}, {20, "2.0"}})
      .entity("INSERT", {{66, "1"}, {2, "DOOR"}, {10, "1.0"}, {20, "2.0"}})
      .entity("ATTRIB", {{2, "NO"}, {10, "3.0"}, {20, "2.0"}})
      .entity("ATTRIB", {{100, "AcDbText"}, {10, "3.0"}, {101, "Embedded Object"}, {10, "3.0"}})
      .entity("SEQEND")
      .open();
  // clang-format on
  std::string attribute(std::uint32_t number) const {
    return pairsOf(*drawing, recordOf(*drawing, 0) + 1 + number);
  }
};

TEST_F(BlockReferencePutTest, AttributesMoveAlong) {
  const Bound made(*drawing, 0);
  EXPECT_EQ(S_OK, made.put(L"InsertionPoint", pointValue(Vector3{5, 1, 4}).get()).result);
  EXPECT_EQ("66=1 2=DOOR 10=5.0 20=1.0 30=4.0 50=0.0", pairsOf(*drawing));
  EXPECT_EQ("2=NO 10=7.0 20=1.0 30=4.0 50=10.0", attribute(0));
  EXPECT_EQ("2=OF 10=5.0 20=1.0 30=4.0", attribute(1));
}

TEST_F(BlockReferencePutTest, AttributesTurnAlong) {
  const Bound made(*drawing, 0);
  EXPECT_EQ(S_OK, made.put(L"Rotation", number(pi / 2)).result);
  const database::Lens turned(*drawing, recordOf(*drawing, 0) + 1);
  EXPECT_NEAR(1, turned.point(10, "*")[0], 1e-12);
  EXPECT_NEAR(4, turned.point(10, "*")[1], 1e-12);
  EXPECT_NEAR(100, turned.real(50, "*", 0), 1e-9);
  EXPECT_EQ("2=OF 10=1.0 20=2.0 50=90.0", attribute(1));
}

TEST_F(BlockReferencePutTest, AttributesAreNotStretched) {
  const Bound made(*drawing, 0);
  const std::string before = drawing->document().bytes();
  for (const wchar_t* name : {L"XScaleFactor", L"YScaleFactor", L"ZScaleFactor"})
    EXPECT_EQ(E_FAIL, made.put(name, number(2)).scode);
  EXPECT_EQ(before, drawing->document().bytes());
  const Bound bare(*drawing, 1);
  EXPECT_EQ(S_OK, bare.put(L"YScaleFactor", number(-2)).result);
  EXPECT_EQ(E_INVALIDARG, bare.put(L"XScaleFactor", number(0)).scode);
  EXPECT_EQ("2=DOOR 10=1.0 20=2.0 42=-2.0", pairsOf(*drawing, recordOf(*drawing, 1)));
}

TEST_F(BlockReferencePutTest, WhenAnAttributeCannotFollowNothingMoves) {
  const Bound made(*drawing, 2);
  const std::string before = drawing->document().bytes();
  EXPECT_EQ(E_FAIL, made.putElement(L"InsertionPoint", 0, 7));
  EXPECT_EQ(E_FAIL, made.put(L"Rotation", number(1)).scode);
  EXPECT_EQ(before, drawing->document().bytes());
}

}  // namespace
}  // namespace velt::automation
