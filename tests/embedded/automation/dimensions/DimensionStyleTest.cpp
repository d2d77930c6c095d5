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
  EXPECT_EQ(3.5, of(0).real(41, 1));
  EXPECT_EQ(2, of(0).integer(271, 4));
  EXPECT_EQ(L"<> mm", of(0).text(3));
  EXPECT_EQ(L"Notes", of(0).entryName(340, drawing->textStyles()));
  EXPECT_EQ(L"_DotSmall", of(0).blockName(342, 5));
}

TEST_F(DimensionStyleTest, AnOverrideCountsMoreAndOthersDoNot) {
  EXPECT_EQ(7, of(1).real(41, 1))
      << "neither another application's, nor another list's, nor a value that looks like it";
  EXPECT_EQ(41, of(1).integer(271, 4));
  EXPECT_EQ(L"", of(1).blockName(342, 5)) << "overridden by none";
}

TEST_F(DimensionStyleTest, OldDrawingsNameBlocks) {
  EXPECT_EQ(L"DOT", of(2).blockName(342, 5));
  EXPECT_EQ(2, of(2).real(41, 1));
}

TEST_F(DimensionStyleTest, WhatIsMissingIsWhatTheCallerSays) {
  EXPECT_EQ(1.5, of(3).real(41, 1.5)) << "an override without a value is none";
  EXPECT_EQ(4, of(3).integer(271, 4));
  EXPECT_EQ(L"", of(3).text(3));
  EXPECT_EQ(L"Standard", of(4).name());
}

TEST(DimensionStyleArrowheads, AreKnownByTheirBlocks) {
  EXPECT_EQ(0, arrowheadOfBlock(L""));
  EXPECT_EQ(3, arrowheadOfBlock(L"_Dot"));
  EXPECT_EQ(3, arrowheadOfBlock(L"DOT"));
  EXPECT_EQ(4, arrowheadOfBlock(L"_ArchTick"));
  EXPECT_EQ(19, arrowheadOfBlock(L"_NONE"));
  EXPECT_EQ(20, arrowheadOfBlock(L"My arrow"));
}

TEST(DimensionStyleArrowheads, HaveTheirBlocksUnderBothSpellings) {
  // clang-format off
  const auto drawing = Sample().tableRecord("BLOCK_RECORD", {{5, "52"}, {2, "_Dot"}}).tableRecord("BLOCK_RECORD", {{5, "53"}, {2, "ArchTick"}}).open();
  // clang-format on
  EXPECT_EQ(L"_Dot", blockOfArrowhead(*drawing, 3)->name);
  EXPECT_EQ(L"ArchTick", blockOfArrowhead(*drawing, 4)->name);
  for (const std::int32_t none : {-1, 0, 5, 20, 21})
    EXPECT_EQ(nullptr, blockOfArrowhead(*drawing, none)) << none;
}

TEST(DimensionStyleHandles, AreThoseOfTheDrawing) {
  const auto drawing =
      Sample().tableRecord("STYLE", {{5, "51"}, {2, "Notes"}}).tableRecord("STYLE", {{2, "Old"}}).open();
  EXPECT_EQ(0x51U, handleOfEntry(*drawing, *drawing->textStyles().find(L"Notes")));
  EXPECT_THROW(static_cast<void>(handleOfEntry(*drawing, *drawing->textStyles().find(L"Old"))), Refusal)
      << "one that is given here stands in no file";
  EXPECT_THROW(static_cast<void>(handleOfEntry(*drawing, *drawing->linetypes().find(L"ByLayer"))), Refusal);
}

class DimensionStylePutTest : public ::testing::Test {
 protected:
  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .version("AC1027")
      .tableRecord("APPID", {{2, "ACAD"}})
      .tableRecord("LTYPE", {{5, "50"}, {2, "Dashed"}})
      .tableRecord("DIMSTYLE", {{2, "Mine"}, {41, "2.50"}, {78, "12"}, {69, "2"}, {77, "9"}, {345, "50"}})
      .entity("DIMENSION", {{3, "Mine"}, {70, "32"}})
      .open();
  // clang-format on
  Bound made{*drawing, 0};

  [[nodiscard]] std::string pairs() const { return pairsOf(*drawing); }
};

TEST_F(DimensionStylePutTest, TheValueInEffectIsNotWritten) {
  EXPECT_EQ(S_OK, made.put(L"ArrowheadSize", number(2.5)).result);
  EXPECT_EQ(S_OK, made.put(L"TextHeight", number(0.18)).result);
  EXPECT_EQ(S_OK, made.put(L"TextFill", flag(true)).result);
  EXPECT_EQ(S_OK, made.put(L"SuppressLeadingZeros", flag(true)).result);
  EXPECT_EQ(S_OK, made.put(L"VerticalTextPosition", integer(0)).result)
      << "what is no member counts as missing";
  EXPECT_EQ(S_OK, made.put(L"DimensionLinetype", L"DASHED").result);
  EXPECT_EQ(S_OK, made.put(L"ExtLine1Linetype", L"ByBlock").result);
  EXPECT_EQ("3=Mine 70=32", pairs());
}

TEST_F(DimensionStylePutTest, EachKindOfVariableIsWrittenAsWhatItIs) {
  EXPECT_EQ(S_OK, made.put(L"ArrowheadSize", number(3)).result);
  EXPECT_EQ(S_OK, made.put(L"SuppressLeadingZeros", flag(false)).result);
  EXPECT_EQ(S_OK, made.put(L"TextFill", flag(false)).result);
  EXPECT_EQ(S_OK, made.put(L"DimensionLinetype", L"byblock").result);
  EXPECT_EQ(S_OK, made.put(L"ExtLine1Linetype", L"dashed").result);
  EXPECT_EQ(S_OK, made.put(L"TextColor", integer(7)).result);
  EXPECT_EQ(
      "3=Mine 70=32 1001=ACAD 1000=DSTYLE 1002={ 1070=41 1040=3.0 1070=78 1070=8 1070=69 1070=0 1070=345 "
      "1005=0 "
      "1070=346 1005=50 1070=178 1070=7 1002=}",
      pairs());
  EXPECT_EQ(L"ByBlock", made.text(L"DimensionLinetype"));
  EXPECT_EQ(L"Dashed", made.text(L"ExtLine1Linetype"));
}

TEST_F(DimensionStylePutTest, WhatTheVariableCannotBeIsRefused) {
  EXPECT_EQ(E_INVALIDARG, made.put(L"ArrowheadSize", number(-1)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"TextColor", integer(257)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"DimensionLinetype", L"Dotted").scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"DimensionLineWeight", integer(1234)).scode);
  EXPECT_EQ("3=Mine 70=32", pairs());
}

TEST(DimensionStyleFormats, KnowTheirVariablesOnly) {
  EXPECT_STREQ("", firstFormatOf(41));
  EXPECT_STREQ("AC1012", firstFormatOf(340));
  EXPECT_STREQ("AC1015", firstFormatOf(371));
  EXPECT_STREQ("AC1021", firstFormatOf(345));
  const auto drawing = Sample()
                           .version("AC1009")
                           .tableRecord("APPID", {{2, "ACAD"}})
                           .tableRecord("BLOCK_RECORD", {{5, "52"}, {2, "_Dot"}})
                           .entity("DIMENSION", {{70, "32"}})
                           .open();
  const Bound made(*drawing, 0);
  for (const wchar_t* name : {L"DimensionLineWeight", L"Precision", L"Arrowhead1Type"})
    EXPECT_EQ(E_FAIL, made.put(name, integer(0)).scode);
  EXPECT_EQ("70=32", pairsOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"ScaleFactor", number(50)).result);
  EXPECT_EQ("70=32 1001=ACAD 1000=DSTYLE 1002={ 1070=40 1040=50.0 1002=}", pairsOf(*drawing));
}

}  // namespace
}  // namespace velt::automation
