#include "embedded/automation/dimensions/StyleAccess.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/model/ClassIndex.h"
#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

class StyleAccessTest : public ::testing::Test {
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

TEST_F(StyleAccessTest, TheValueInEffectIsNotWritten) {
  EXPECT_EQ(S_OK, made.put(L"ArrowheadSize", number(2.5)).result);
  EXPECT_EQ(S_OK, made.put(L"TextHeight", number(0.18)).result);
  EXPECT_EQ(S_OK, made.put(L"TextFill", flag(true)).result);
  EXPECT_EQ(S_OK, made.put(L"SuppressLeadingZeros", flag(true)).result);
  EXPECT_EQ(S_OK, made.put(L"VerticalTextPosition", integer(0)).result)
      << "another number than a member's counts as missing";
  EXPECT_EQ(S_OK, made.put(L"DimensionLinetype", L"DASHED").result);
  EXPECT_EQ(S_OK, made.put(L"ExtLine1Linetype", L"ByBlock").result);
  EXPECT_EQ("3=Mine 70=32", pairs());
}

TEST_F(StyleAccessTest, EachKindOfVariableIsWrittenAsWhatItIs) {
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

TEST_F(StyleAccessTest, WhatTheVariableCannotBeIsRefused) {
  EXPECT_EQ(E_INVALIDARG, made.put(L"ArrowheadSize", number(-1)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"TextColor", integer(257)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"DimensionLinetype", L"Dotted").scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"DimensionLineWeight", integer(1234)).scode);
  EXPECT_EQ("3=Mine 70=32", pairs());
}

TEST(StyleVariables, AreKnownToTheFormatsThatHaveThem) {
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

TEST(StyleVariables, HaveEachCodeOnce) {
  std::map<int, std::pair<double, std::string>> variables;
  for (const AutomationClass* kind : automationClasses()) {
    const ClassIndex index(*kind);
    for (const PropertyRow* row : index.rows()) {
      const Access& access = row->access;
      if (access.kind != AccessKind::StyleVariable) continue;
      const std::pair<double, std::string> facts(access.otherwise, access.since);
      const auto& [known, added] = variables.emplace(access.code, facts);
      EXPECT_EQ(facts, known->second) << access.code << " at " << std::filesystem::path(row->name);
    }
  }
  EXPECT_FALSE(variables.empty());
}

}  // namespace
}  // namespace velt::automation
