#include "tool/ValueGroups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tool/Drawings.h"
#include "tool/EntitySelection.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::ElementsAre;
using velt::database::Drawing;

class ValueGroups : public testing::Test {
 protected:
  std::vector<SelectableValue> behind(const std::string& entities, const std::string& name) {
    drawing_ = Drawing::parse(drawingOf({{"0"}, {"Walls"}}, entities), "house.dxf");
    velt::palette::Selection selection(select(*drawing_, {.all = true}).ids);
    const std::vector<velt::palette::Row>& rows = selection.query();
    return valuesBehind(selection, velt::palette::rowsNamed(rows, name).front(), rows, {});
  }
  static std::vector<std::string> options(const std::vector<SelectableValue>& values) {
    std::vector<std::string> made;
    for (const SelectableValue& value : values)
      made.push_back(value.option);
    return made;
  }

 private:
  std::unique_ptr<Drawing> drawing_;
};

std::string text(const std::string& handle, const std::string& content) {
  return pairs({{0, "TEXT"},
                {5, handle},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbText"},
                {10, "0"},
                {20, "0"},
                {40, "1"},
                {1, content},
                {100, "AcDbText"}});
}

TEST_F(ValueGroups, ThoseThatMostEntitiesHaveComeFirst) {
  const auto values = behind(line("2F", "0") + line("30", "Walls") + line("31", "Walls"), "Layer");
  ASSERT_EQ(values.size(), 2U);
  EXPECT_EQ(values[0].group.text, "Walls");
  EXPECT_THAT(values[0].group.entities, ElementsAre(1, 2));
  EXPECT_THAT(options(values), ElementsAre("--where \"Layer=Walls\"", "--where \"Layer=0\""));
}

TEST_F(ValueGroups, TextsAreQuotedForTheConditionAndForTheShell) {
  const auto values = behind(text("2F", "it's $5 \"net\"") + text("30", "plain"), "Contents");
  EXPECT_EQ(options(values)[0], "--where \"Contents='it''s \\$5 \\\"net\\\"'\"");
}

TEST_F(ValueGroups, LettersDigitsPointsAndHyphensNeedNoQuotes) {
  const auto values = behind(text("2F", "azAZ09.-") + text("30", "a_b"), "Contents");
  EXPECT_THAT(options(values), ElementsAre("--where \"Contents=azAZ09.-\"", "--where \"Contents='a_b'\""));
  for (const std::string other : {"/", ":", "@", "[", "^", "{", ",", "+"}) {
    EXPECT_THAT(options(behind(text("2F", other) + text("30", "plain"), "Contents"))[0],
                testing::HasSubstr("='" + other + "'"))
        << other;
  }
}

TEST_F(ValueGroups, ChoicesOfSeveralClassesAreSelectedByHandle) {
  EXPECT_THAT(options(behind(line("2F", "0") + line("31", "0"), "Lineweight")),
              ElementsAre(testing::StartsWith("--where ")));
  EXPECT_THAT(options(behind(line("2F", "0") + circle("31", "0"), "Lineweight")),
              ElementsAre("--handle 2F,31"))
      << "each may call its numbers by names of its own";
}

TEST_F(ValueGroups, WhatAConditionDoesNotTellApartIsSelectedByHandle) {
  EXPECT_THAT(options(behind(text("2F", "Wall") + text("30", "WALL"), "Contents")),
              ElementsAre("--handle 2F", "--handle 30"));
}

}  // namespace
}  // namespace velt::tool
