#include "embedded/database/RecordEditor.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::entityRecord;
using test::Pairs;
using test::record;
using test::Sample;

class RecordEditorTest : public testing::Test {
 protected:
  RecordEditor editorOf(Pairs pairs, const std::string& version = "AC1032") {
    drawing_ = Sample().version(version).entity("LINE", pairs).open();
    return {*drawing_, entityRecord(*drawing_)};
  }

  // What the drawing would be written as: only the line has these pairs.
  void expectLine(Pairs pairs) {
    const std::string bytes = drawing_->document().bytes();
    const std::size_t line = bytes.find("0\nLINE\n");
    std::string padded = bytes.substr(line, bytes.find("0\nENDSEC\n", line) - line);
    std::string written;
    for (std::size_t index = 0; index < padded.size(); ++index) {
      const bool atLineStart = index == 0 || padded[index - 1] == '\n';
      if (!(atLineStart && padded[index] == ' ')) written += padded[index];
    }
    EXPECT_EQ(record("LINE", pairs), written);
  }

  std::unique_ptr<Drawing> drawing_;
};

TEST_F(RecordEditorTest, AValueThatIsThereIsReplacedAndAllElseStays) {
  RecordEditor editor =
      editorOf({{5, "1A"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbLine"}, {40, "1.50"}, {41, "2.50"}});
  EXPECT_TRUE(editor.setReal(41, "AcDbLine", 3.0));
  expectLine({{5, "1A"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbLine"}, {40, "1.50"}, {41, "3.0"}});
  EXPECT_EQ(1U, drawing_->revision());
}

TEST_F(RecordEditorTest, AMissingValueGoesAfterItsHintOrToTheEndOfItsSubclass) {
  RecordEditor editor = editorOf({{100, "AcDbEntity"}, {8, "0"}, {62, "1"}, {100, "AcDbLine"}, {40, "1.5"}});
  EXPECT_TRUE(editor.setInteger(370, "AcDbEntity", 50));
  EXPECT_TRUE(editor.setText(6, "AcDbEntity", L"DASHED", {8}));
  EXPECT_TRUE(editor.setHandle(340, "AcDbLine", 0xAB));
  expectLine({{100, "AcDbEntity"},
              {8, "0"},
              {6, "DASHED"},
              {62, "1"},
              {370, "50"},
              {100, "AcDbLine"},
              {40, "1.5"},
              {340, "AB"}});
}

TEST_F(RecordEditorTest, ASubclassThatTheRecordLacksRefusesTheValue) {
  RecordEditor editor = editorOf({{100, "AcDbEntity"}, {8, "0"}});
  EXPECT_FALSE(editor.setReal(40, "AcDbCircle", 1.0));
  EXPECT_FALSE(editor.setPoint(10, "AcDbCircle", {1, 2, 3}));
  EXPECT_EQ(0U, drawing_->revision());
}

TEST_F(RecordEditorTest, WhatAllEntitiesHaveMayStandBeforeTheFirstMarker) {
  RecordEditor editor = editorOf({{8, "0"}, {100, "AcDbLine"}, {40, "1.5"}});
  EXPECT_TRUE(editor.setInteger(62, commonSubclass, 3, {8}));
  EXPECT_TRUE(editor.setText(8, commonSubclass, L"Walls"));
  expectLine({{8, "Walls"}, {62, "3"}, {100, "AcDbLine"}, {40, "1.5"}});
}

TEST_F(RecordEditorTest, TextsAreEncodedAsTheDrawingIs) {
  RecordEditor old = editorOf({{100, "AcDbText"}, {1, "a"}}, "AC1015");
  EXPECT_TRUE(old.setText(1, "AcDbText", L"Ø \x2264"));
  expectLine({{100, "AcDbText"}, {1, "\xD8 \\U+2264"}});
  RecordEditor modern = editorOf({{100, "AcDbText"}, {1, "a"}});
  EXPECT_TRUE(modern.setText(1, "AcDbText", L"Ø"));
  expectLine({{100, "AcDbText"}, {1, "\xC3\x98"}});
}

TEST_F(RecordEditorTest, APointKeepsToItsDimensions) {
  RecordEditor editor =
      editorOf({{100, "AcDbLine"}, {10, "1.0"}, {20, "2.0"}, {11, "1.0"}, {21, "2.0"}, {31, "3.0"}});
  EXPECT_TRUE(editor.setPoint(10, "AcDbLine", {5, 6, 0}));
  EXPECT_TRUE(editor.setPoint(11, "AcDbLine", {7, 8, 0}));
  expectLine({{100, "AcDbLine"}, {10, "5.0"}, {20, "6.0"}, {11, "7.0"}, {21, "8.0"}, {31, "0.0"}});
  EXPECT_TRUE(editor.setPoint(10, "AcDbLine", {5, 6, 9}));
  EXPECT_TRUE(editor.setPoint(210, "AcDbLine", {0, 0, 1}));
  expectLine({{100, "AcDbLine"},
              {10, "5.0"},
              {20, "6.0"},
              {30, "9.0"},
              {11, "7.0"},
              {21, "8.0"},
              {31, "0.0"},
              {210, "0.0"},
              {220, "0.0"},
              {230, "1.0"}});
}

TEST_F(RecordEditorTest, RemovingTakesOutAllValuesOfTheCodeInTheSubclass) {
  RecordEditor editor = editorOf({{100, "AcDbEntity"}, {62, "1"}, {62, "2"}, {100, "AcDbLine"}, {62, "3"}});
  EXPECT_TRUE(editor.remove(62, "AcDbEntity"));
  expectLine({{100, "AcDbEntity"}, {100, "AcDbLine"}, {62, "3"}});
  EXPECT_FALSE(editor.remove(62, "AcDbEntity"));
  EXPECT_EQ(1U, drawing_->revision());
}

TEST_F(RecordEditorTest, WhatNoDrawingCanHoldIsRefused) {
  const Pairs pairs = {{100, "AcDbLine"}, {10, "1.0"}, {20, "2.0"}};
  RecordEditor editor = editorOf(pairs);
  constexpr double infinity = std::numeric_limits<double>::infinity();
  EXPECT_THROW(editor.setReal(10, "AcDbLine", infinity), std::invalid_argument);
  EXPECT_THROW(editor.setPoint(10, "AcDbLine", {5, 6, infinity}), std::invalid_argument);
  expectLine(pairs);
}

TEST_F(RecordEditorTest, WhatIsThereAlreadyStaysAsItIsWritten) {
  const Pairs pairs = {{100, "AcDbLine"}, {40, "1.50"}, {70, " 3"}, {340, "0aB"},
                       {1, "\\U+00E4"},   {10, "+1."},  {20, "2"},  {30, "3.000"}};
  RecordEditor editor = editorOf(pairs);
  EXPECT_TRUE(editor.setReal(40, "AcDbLine", 1.5));
  EXPECT_TRUE(editor.setInteger(70, "AcDbLine", 3));
  EXPECT_TRUE(editor.setHandle(340, "AcDbLine", 0xAB));
  EXPECT_TRUE(editor.setText(1, "AcDbLine", L"\u00E4"));
  EXPECT_TRUE(editor.setPoint(10, "AcDbLine", {1, 2, 3}));
  EXPECT_EQ(0U, drawing_->revision());
}

TEST_F(RecordEditorTest, BytesAreWrittenAsTheyAre) {
  RecordEditor editor = editorOf({{100, "AcDbLine"}, {1, "\\U+00E4"}});
  EXPECT_TRUE(editor.setBytes(1, "AcDbLine", "\\U+00e4"));
  expectLine({{100, "AcDbLine"}, {1, "\\U+00e4"}});
}

TEST_F(RecordEditorTest, AValueIsWrittenWhereALensLooks) {
  RecordEditor editor = editorOf({{5, "1A"}, {100, "AcDbLine"}, {40, "1.5"}, {100, "AcDbEntity"}, {8, "0"}});
  EXPECT_TRUE(editor.setInteger(62, commonSubclass, 5));
  EXPECT_EQ(5, Lens(*drawing_, entityRecord(*drawing_)).integer(62, commonSubclass, -1));
  expectLine({{5, "1A"}, {100, "AcDbLine"}, {40, "1.5"}, {100, "AcDbEntity"}, {8, "0"}, {62, "5"}});
}

TEST_F(RecordEditorTest, TheCoordinatesOfAPointAreThoseThatFollowItsX) {
  RecordEditor editor = editorOf({{20, "8.0"}, {30, "9.0"}, {10, "1.0"}, {20, "2.0"}, {30, "3.0"}});
  EXPECT_TRUE(editor.setPoint(10, "AcDbLine", {4, 5, 6}));
  expectLine({{20, "8.0"}, {30, "9.0"}, {10, "4.0"}, {20, "5.0"}, {30, "6.0"}});
}

TEST_F(RecordEditorTest, MissingCoordinatesFollowTheXInOrder) {
  RecordEditor editor = editorOf({{20, "8.0"}, {30, "9.0"}, {10, "1.0"}, {11, "1.0"}});
  EXPECT_TRUE(editor.setPoint(10, "AcDbLine", {4, 5, 6}));
  expectLine({{20, "8.0"}, {30, "9.0"}, {10, "4.0"}, {20, "5.0"}, {30, "6.0"}, {11, "1.0"}});
}

TEST_F(RecordEditorTest, APointWithoutAnXGetsOne) {
  RecordEditor editor = editorOf({{20, "8.0"}, {30, "9.0"}});
  EXPECT_TRUE(editor.setPoint(10, "AcDbLine", {4, 0, 0}));
  expectLine({{20, "8.0"}, {30, "9.0"}, {10, "4.0"}, {20, "0.0"}});
}

}  // namespace
}  // namespace velt::database
