#include "embedded/automation/dimensions/DimensionStyle.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

// clang-format off
class DimensionStyleTest : public ::testing::Test {
 protected:
  [[nodiscard]] DimensionStyle of(std::size_t entity) const {
    const VkDbObjectId id = drawing->entities()[entity];
    return DimensionStyle(Subject(*database::resolve(id), id, entityKind));
  }

  const AutomationClass& entityKind = ClassRegistry::ofHost().find(CLSID_VeltEntity)->index.kind();
  std::unique_ptr<Drawing> drawing = Sample()
      .tableRecord("STYLE", {{5, "51"}, {2, "Notes"}})
      .tableRecord("BLOCK_RECORD", {{5, "52"}, {2, "_DotSmall"}})
      .tableRecord("DIMSTYLE", {{105, "60"}, {100, "AcDbSymbolTableRecord"}, {100, "AcDbDimStyleTableRecord"}, {2, "Mine"},
                                {70, "0"}, {3, "<> mm"}, {41, "3.5"}, {271, "2"}, {340, "51"}, {342, "52"}})
      .tableRecord("DIMSTYLE", {{2, "Old"}, {5, "DOT"}, {41, "2"}})
      .entity("DIMENSION", {{100, "AcDbDimension"}, {3, "MINE"}})
      .entity("DIMENSION", {{100, "AcDbDimension"}, {3, "Mine"}, {1001, "OTHER"}, {1000, "DSTYLE"}, {1002, "{"}, {1070, "41"}, {1040, "9"}, {1002, "}"},
                            {1001, "ACAD"}, {1000, "LIST"}, {1002, "{"}, {1070, "41"}, {1040, "8"}, {1002, "}"},
                            {1000, "DSTYLE"}, {1002, "{"}, {1070, "271"}, {1070, "41"}, {1070, "41"}, {1040, "7"}, {1070, "342"}, {1005, "0"}, {1002, "}"}})
      .entity("DIMENSION", {{100, "AcDbDimension"}, {3, "Old"}})
      .entity("DIMENSION", {{100, "AcDbDimension"}, {3, "Nowhere"}, {1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1070, "41"}})
      .entity("DIMENSION", {{100, "AcDbDimension"}})
      .open();
};
// clang-format on

TEST_F(DimensionStyleTest, TheRecordOfTheStyleTellsWhatTheEntityDoesNot) {
  EXPECT_EQ(L"MINE", of(0).name());
  EXPECT_EQ(3.5, of(0).real(variables::arrowheadSize));
  EXPECT_EQ(2, of(0).integer(variables::lengthPrecision));
  EXPECT_EQ(L"<> mm", of(0).text(variables::affixes));
  EXPECT_EQ(L"Notes", of(0).entryName(variables::textStyle, drawing->textStyles()));
  EXPECT_EQ(L"_DotSmall", of(0).blockName(variables::arrowhead, variables::arrowheadName));
}

TEST_F(DimensionStyleTest, AnOverrideCountsMoreAndOthersDoNot) {
  EXPECT_EQ(7, of(1).real(variables::arrowheadSize))
      << "neither another application's, nor another list's, nor a value that looks like it";
  EXPECT_EQ(41, of(1).integer(variables::lengthPrecision));
  EXPECT_EQ(L"", of(1).blockName(variables::arrowhead, variables::arrowheadName)) << "overridden by none";
}

TEST_F(DimensionStyleTest, TheStyleCanBeAskedWithoutTheOverrides) {
  EXPECT_EQ(3.5, of(1).realOfStyle(variables::arrowheadSize));
  EXPECT_EQ(0.18, of(4).realOfStyle(variables::arrowheadSize)) << "there is no style";
}

TEST_F(DimensionStyleTest, OldDrawingsNameBlocks) {
  EXPECT_EQ(L"DOT", of(2).blockName(variables::arrowhead, variables::arrowheadName));
  EXPECT_EQ(2, of(2).real(variables::arrowheadSize));
}

TEST_F(DimensionStyleTest, WhatIsMissingHasItsUsualValue) {
  EXPECT_EQ(0.18, of(3).real(variables::arrowheadSize)) << "an override without a value is none";
  EXPECT_EQ(4, of(3).integer(variables::lengthPrecision));
  EXPECT_EQ(L"", of(3).text(variables::affixes));
  EXPECT_EQ(L"Standard", of(4).name());
}

}  // namespace
}  // namespace velt::automation
