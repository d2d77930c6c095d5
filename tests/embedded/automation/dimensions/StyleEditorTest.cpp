#include "embedded/automation/dimensions/StyleEditor.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

class StyleEditorTest : public ::testing::Test {
 protected:
  StyleEditor editorOf(Pairs pairs) {
    drawing = Sample().tableRecord("APPID", {{2, "ACAD"}}).entity("LEADER", pairs).open();
    return StyleEditor(subjectOf(*drawing));
  }
  std::unique_ptr<Drawing> drawing;
};

TEST_F(StyleEditorTest, AnEntityWithoutExtendedDataGetsAList) {
  StyleEditor editor = editorOf({{100, "AcDbLeader"}, {71, "1"}});
  editor.real(variables::arrowheadSize, 2.5);
  EXPECT_EQ("100=AcDbLeader 71=1 1001=ACAD 1000=DSTYLE 1002={ 1070=41 1040=2.5 1002=}", pairsOf(*drawing));
}

TEST_F(StyleEditorTest, OtherApplicationsStayInFront) {
  StyleEditor editor = editorOf({{8, "0"}, {1001, "MINE"}, {1000, "DSTYLE"}, {1002, "{"}, {1002, "}"}});
  editor.integer(variables::verticalPosition, 1);
  EXPECT_EQ("8=0 1001=MINE 1000=DSTYLE 1002={ 1002=} 1001=ACAD 1000=DSTYLE 1002={ 1070=77 1070=1 1002=}",
            pairsOf(*drawing));
}

TEST_F(StyleEditorTest, OtherListsOfTheApplicationStay) {
  StyleEditor editor = editorOf({{1001, "ACAD"},
                                 {1000, "LIST"},
                                 {1002, "{"},
                                 {1070, "41"},
                                 {1040, "8"},
                                 {1002, "}"},
                                 {1001, "LAST"},
                                 {1070, "1"}});
  editor.handle(variables::leaderArrowhead, 0x2A);
  EXPECT_EQ(
      "1001=ACAD 1000=LIST 1002={ 1070=41 1040=8 1002=} 1000=DSTYLE 1002={ 1070=341 1005=2A 1002=} "
      "1001=LAST 1070=1",
      pairsOf(*drawing));
}

TEST_F(StyleEditorTest, AFurtherVariableGoesAfterTheOthersOfTheList) {
  StyleEditor editor = editorOf({{1001, "ACAD"},
                                 {1000, "DSTYLE"},
                                 {1002, "{"},
                                 {1070, "271"},
                                 {1070, "41"},
                                 {1002, "}"},
                                 {1000, "after"}});
  editor.real(variables::arrowheadSize, 3);
  editor.text(variables::affixes, L"<> mm");
  EXPECT_EQ(
      "1001=ACAD 1000=DSTYLE 1002={ 1070=271 1070=41 1070=41 1040=3.0 1070=3 1000=<> mm 1002=} 1000=after",
      pairsOf(*drawing));
}

TEST_F(StyleEditorTest, AnEmptyListIsFilled) {
  StyleEditor editor = editorOf({{1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1002, "}"}});
  editor.integer(variables::textColor, 5);
  EXPECT_EQ("1001=ACAD 1000=DSTYLE 1002={ 1070=178 1070=5 1002=}", pairsOf(*drawing));
}

TEST_F(StyleEditorTest, AVariableOfTheListIsReplacedWhereItStands) {
  StyleEditor editor = editorOf({{1001, "ACAD"},
                                 {1000, "DSTYLE"},
                                 {1002, "{"},
                                 {1070, "41"},
                                 {1041, "1.0"},
                                 {1070, "178"},
                                 {1071, "3"},
                                 {1070, "  41"},
                                 {1040, "9"},
                                 {1070, "40"},
                                 {1070, "2"},
                                 {1002, "}"}});
  editor.real(variables::arrowheadSize, 2);
  editor.integer(variables::textColor, 4);
  editor.real(variables::overallScale, 0.5);
  EXPECT_EQ(
      "1001=ACAD 1000=DSTYLE 1002={ 1070=41 1041=2.0 1070=178 1071=4 1070=  41 1040=2.0 1070=40 1040=0.5 "
      "1002=}",
      pairsOf(*drawing))
      << "each in its kind of code, a repeated one everywhere, and a real one that was none as a real one";
}

TEST_F(StyleEditorTest, ADamagedListIsLeftAsItIs) {
  using Case = std::initializer_list<std::pair<int, std::string>>;
  const Case open = {{1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1070, "41"}, {1040, "1"}};
  const Case lonely = {{1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1070, "41"}, {1002, "}"}};
  const Case unnamed = {{1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1040, "1"}, {1002, "}"}};
  const Case cutShort = {{1001, "ACAD"}, {1000, "DSTYLE"}, {1001, "LAST"}};
  for (const Case& damaged : {open, lonely, unnamed, cutShort}) {
    StyleEditor editor = editorOf(damaged);
    const std::string before = pairsOf(*drawing);
    EXPECT_EQ(E_FAIL, refusalOf([&] { editor.real(variables::arrowheadSize, 2); }));
    EXPECT_EQ(before, pairsOf(*drawing));
  }
}

TEST_F(StyleEditorTest, TheDrawingMustKnowTheApplication) {
  drawing = Sample().tableRecord("APPID", {{2, "MINE"}}).entity("LEADER", {{8, "0"}}).open();
  EXPECT_EQ(E_FAIL, refusalOf([&] { StyleEditor(subjectOf(*drawing)).real(variables::arrowheadSize, 2); }));
  EXPECT_EQ("8=0", pairsOf(*drawing));
}

TEST_F(StyleEditorTest, WhatExtendedDataCannotHoldIsRefused) {
  StyleEditor editor = editorOf({{8, "0"}});
  EXPECT_EQ(DISP_E_OVERFLOW, refusalOf([&] { editor.integer(variables::decimalSeparator, 0x8000); }));
  EXPECT_EQ(DISP_E_OVERFLOW, refusalOf([&] {
              editor.real(variables::arrowheadSize, std::numeric_limits<double>::infinity());
            }));
  EXPECT_EQ(E_INVALIDARG, refusalOf([&] { editor.text(variables::affixes, std::wstring(256, L'a')); }));
  EXPECT_EQ(E_INVALIDARG, refusalOf([&] { editor.text(variables::affixes, L"two\nlines"); }));
  EXPECT_EQ("8=0", pairsOf(*drawing));
}

TEST_F(StyleEditorTest, AFlagIsOverriddenByAnotherOneOnly) {
  drawing = Sample().tableRecord("APPID", {{2, "ACAD"}}).entity("LEADER", {{8, "0"}}).open();
  overrideFlag(subjectOf(*drawing), variables::textInside, false);
  EXPECT_EQ("8=0", pairsOf(*drawing));
  overrideFlag(subjectOf(*drawing), variables::textInside, true);
  EXPECT_EQ("8=0 1001=ACAD 1000=DSTYLE 1002={ 1070=174 1070=1 1002=}", pairsOf(*drawing));
}

TEST(StyleEditorHandles, AreThoseOfTheDrawing) {
  const auto drawing =
      Sample().tableRecord("STYLE", {{5, "51"}, {2, "Notes"}}).tableRecord("STYLE", {{2, "Old"}}).open();
  EXPECT_EQ(0x51U, handleOfEntry(*drawing, *drawing->textStyles().find(L"Notes")));
  EXPECT_THROW(static_cast<void>(handleOfEntry(*drawing, *drawing->textStyles().find(L"Old"))), Refusal)
      << "one that is given here stands in no file";
  EXPECT_THROW(static_cast<void>(handleOfEntry(*drawing, *drawing->linetypes().find(L"ByLayer"))), Refusal);
}

}  // namespace
}  // namespace velt::automation
