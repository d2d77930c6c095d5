#include "tool/RowChange.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "embedded/database/Drawing.h"
#include "tests/tool/Drawings.h"

namespace velt::tool {
namespace {

using palette::Relation;

class ChangeOfARow : public testing::Test {
 protected:
  void SetUp() override { selection_.query(); }
  RowChange written(const char* row, const char* text) { return rowChangeIn(selection_.row(row), text); }
  void expect(const RowChange& change, std::optional<Relation> relation, const char* value) {
    EXPECT_EQ(change.relation, relation);
    EXPECT_EQ(change.value, value);
  }
  std::string write(const char* row, const char* text) {
    const palette::Report report =
        tool::write(selection_, selection_.row(row), written(row, text), {.keepGoing = true});
    selection_.query();
    return report.summary();
  }

  std::unique_ptr<database::Drawing> drawing_ =
      database::Drawing::parse(tests::drawingOf({{"0"}}, tests::line("2F", "0")), "house.dxf");
  palette::Selection selection_{drawing_->entities()};
};

TEST_F(ChangeOfARow, ReckonsWithTheSignsOfTheCommandLine) {
  expect(written("End X", "+=5"), Relation::plus, "5");
  expect(written("End X", "-=5"), Relation::minus, "5");
  expect(written("End X", "*=2"), Relation::times, "2");
  expect(written("End X", "/=2"), Relation::dividedBy, "2");
  expect(written("End X", "+="), Relation::plus, "");
  expect(written("Layer", "~s/A/B/"), Relation::replaced, "s/A/B/");
}

TEST_F(ChangeOfARow, TakesEverythingElseAsAValue) {
  for (const char* const value : {"5", "-5", "+5", "=5", "+", "", "~sand", "~s"})
    expect(written("End X", value), std::nullopt, value);
}

TEST_F(ChangeOfARow, OfTextsTakesWhatLooksLikeReckoningAsItIs) {
  expect(written("Layer", "+=5"), std::nullopt, "+=5");
}

TEST_F(ChangeOfARow, IsWrittenToEveryEntity) {
  EXPECT_EQ(write("End X", "*=2"), "1 changed");
  EXPECT_EQ(std::get<double>(selection_.row("End X").plain()), 20);
  EXPECT_EQ(write("End X", "7"), "1 changed");
  EXPECT_EQ(std::get<double>(selection_.row("End X").plain()), 7);
}

TEST_F(ChangeOfARow, ALetterAfterTheSMakesAWordOfIt) {
  for (const char* const value : {"~szone/a/", "~sAnd/a/", "~sZoo/a/", "~sand/a/"})
    expect(written("Layer", value), std::nullopt, value);
  for (const char* const value : {"~s/", "~s{a{b{", "~s@a@b@", "~s[a[b[", "~s`a`b`"})
    expect(written("Layer", value), Relation::replaced, value + 1);
}

TEST_F(ChangeOfARow, LooksAtNothingBehindTheText) {
  const std::string_view longer = "+=5";
  expect(rowChangeIn(selection_.row("End X"), longer.substr(0, 1)), std::nullopt, "+");
}

TEST(ChangeOfARowOfAnOldDrawing, TellsWhyNoValueCanBeWritten) {
  const auto drawing = database::Drawing::parse(tests::oldDrawing(), "old.dxf");
  palette::Selection selection(drawing->entities());
  selection.query();
  const palette::Report report =
      tool::write(selection, selection.row("Lineweight"), {.value = "0.25 mm"}, {.keepGoing = true});
  ASSERT_EQ(report.reasons.size(), 1U);
  EXPECT_EQ(report.reasons.at(0), "DXF R12 cannot store this property; DXF 2000 and later can");
}

}  // namespace
}  // namespace velt::tool
