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
  editor.real(41, 2.5);
  EXPECT_EQ("100=AcDbLeader 71=1 1001=ACAD 1000=DSTYLE 1002={ 1070=41 1040=2.5 1002=}", pairsOf(*drawing));
}

TEST_F(StyleEditorTest, OtherApplicationsStayInFront) {
  StyleEditor editor = editorOf({{8, "0"}, {1001, "MINE"}, {1000, "DSTYLE"}, {1002, "{"}, {1002, "}"}});
  editor.integer(77, 1);
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
  editor.handle(341, 0x2A);
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
  editor.real(41, 3);
  editor.text(3, L"<> mm");
  EXPECT_EQ(
      "1001=ACAD 1000=DSTYLE 1002={ 1070=271 1070=41 1070=41 1040=3.0 1070=3 1000=<> mm 1002=} 1000=after",
      pairsOf(*drawing));
}

TEST_F(StyleEditorTest, AnEmptyListIsFilled) {
  StyleEditor editor = editorOf({{1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1002, "}"}});
  editor.integer(178, 5);
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
  editor.real(41, 2);
  editor.integer(178, 4);
  editor.real(40, 0.5);
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
    EXPECT_EQ(E_FAIL, refusalOf([&] { editor.real(41, 2); }));
    EXPECT_EQ(before, pairsOf(*drawing));
  }
}

TEST_F(StyleEditorTest, TheDrawingMustKnowTheApplication) {
  drawing = Sample().tableRecord("APPID", {{2, "MINE"}}).entity("LEADER", {{8, "0"}}).open();
  EXPECT_EQ(E_FAIL, refusalOf([&] { StyleEditor(subjectOf(*drawing)).real(41, 2); }));
  EXPECT_EQ("8=0", pairsOf(*drawing));
}

TEST_F(StyleEditorTest, WhatExtendedDataCannotHoldIsRefused) {
  StyleEditor editor = editorOf({{8, "0"}});
  EXPECT_EQ(DISP_E_OVERFLOW, refusalOf([&] { editor.integer(278, 0x8000); }));
  EXPECT_EQ(DISP_E_OVERFLOW, refusalOf([&] { editor.real(41, std::numeric_limits<double>::infinity()); }));
  EXPECT_EQ(E_INVALIDARG, refusalOf([&] { editor.text(3, std::wstring(256, L'a')); }));
  EXPECT_EQ(E_INVALIDARG, refusalOf([&] { editor.text(3, L"two\nlines"); }));
  EXPECT_EQ("8=0", pairsOf(*drawing));
}

}  // namespace
}  // namespace velt::automation
