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

TEST_F(ValueGroups, ThoseThatMostEntitiesHaveComeFirst) {
  const auto values = behind(line("2F", "0") + line("30", "Walls") + line("31", "Walls"), "Layer");
  ASSERT_EQ(values.size(), 2U);
  EXPECT_EQ(values[0].group.text, "Walls");
  EXPECT_THAT(values[0].group.entities, ElementsAre(1, 2));
  EXPECT_THAT(options(values), ElementsAre("--where \"Layer=Walls\"", "--where \"Layer=0\""));
}

TEST_F(ValueGroups, TextsAreQuotedForTheConditionAndForTheShell) {
  const auto values = behind(textEntity("2F", "it's $5 \"net\"") + textEntity("30", "plain"), "Contents");
  EXPECT_EQ(options(values)[0], "--where \"Contents='it''s \\$5 \\\"net\\\"'\"");
}

TEST_F(ValueGroups, LettersDigitsPointsAndHyphensNeedNoQuotes) {
  const auto values = behind(textEntity("2F", "azAZ09.-") + textEntity("30", "a_b"), "Contents");
  EXPECT_THAT(options(values), ElementsAre("--where \"Contents=azAZ09.-\"", "--where \"Contents='a_b'\""));
  for (const std::string other : {"/", ":", "@", "[", "^", "{", ",", "+"}) {
    EXPECT_THAT(options(behind(textEntity("2F", other) + textEntity("30", "plain"), "Contents"))[0],
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
  EXPECT_THAT(options(behind(textEntity("2F", "Wall") + textEntity("30", "WALL"), "Contents")),
              ElementsAre("--handle 2F", "--handle 30"));
}

std::string lineTo(const std::string& handle, const std::string& x) {
  return pairs({{0, "LINE"},
                {5, handle},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbLine"},
                {10, "0"},
                {20, "0"},
                {11, x},
                {21, "1"}});
}

TEST_F(ValueGroups, NumbersThatDifferHardlyAreSelectedByHandle) {
  EXPECT_THAT(options(behind(lineTo("2F", "10") + lineTo("30", "10.000000001"), "End X")),
              ElementsAre("--handle 2F", "--handle 30"));
  EXPECT_THAT(options(behind(lineTo("2F", "10") + lineTo("30", "10.1"), "End X")),
              ElementsAre("--where \"'End X'=10\"", "--where \"'End X'=10.1\""));
}

TEST_F(ValueGroups, NumbersThatDifferHardlyNeedNotStandBesideEachOther) {
  EXPECT_THAT(
      options(behind(lineTo("2F", "10.000000001") + lineTo("30", "20") + lineTo("31", "10")
                         + lineTo("32", "5") + lineTo("33", "20.000000001"),
                     "End X")),
      ElementsAre("--handle 2F", "--handle 30", "--handle 31", "--where \"'End X'=5\"", "--handle 33"));
}

TEST_F(ValueGroups, AnglesHaveAllTheirDigits) {
  const auto values = behind(lineTo("2F", "1") + lineTo("30", "3"), "Angle");
  EXPECT_EQ(options(values)[0], "--where \"Angle='45\u00B0'\"");
  EXPECT_THAT(options(values)[1], testing::StartsWith("--where \"Angle='18.43494882292"));
}

TEST_F(ValueGroups, BackslashesAndBackticksAreQuotedForTheShell) {
  EXPECT_EQ(options(behind(textEntity("2F", "a\\b`c") + textEntity("30", "plain"), "Contents"))[0],
            "--where \"Contents='a\\\\b\\`c'\"");
}

TEST_F(ValueGroups, AnEmptyTextIsQuoted) {
  EXPECT_THAT(options(behind(textEntity("2F", "") + textEntity("30", "plain"), "Contents")),
              ElementsAre("--where \"Contents=''\"", "--where \"Contents=plain\""));
}

TEST_F(ValueGroups, ARowThatItsLabelDoesNotMeanIsSelectedByHandle) {
  const auto drawing =
      Drawing::parse(drawingOf({{"0"}, {"Walls"}}, line("2F", "0") + line("30", "Walls")), "house.dxf");
  velt::palette::Selection selection(select(*drawing, {.all = true}).ids);
  selection.query();
  const velt::palette::Row layer = selection.row("Layer");
  const auto optionsAmong = [&](const std::vector<velt::palette::Row>& rows) {
    return options(valuesBehind(selection, layer, rows, {}));
  };
  EXPECT_THAT(optionsAmong({layer}), ElementsAre("--where \"Layer=0\"", "--where \"Layer=Walls\""));
  EXPECT_THAT(optionsAmong({layer, layer}), ElementsAre("--handle 2F", "--handle 30"));
  PROPINFO other;
  other.name = L"LayerOfBlock";
  other.displayName = L"Layer";
  EXPECT_THAT(optionsAmong({velt::palette::Row(other), layer}), ElementsAre("--handle 2F", "--handle 30"));
  EXPECT_THAT(optionsAmong({layer, velt::palette::Row(other)}),
              ElementsAre("--where \"Layer=0\"", "--where \"Layer=Walls\""));
}

TEST_F(ValueGroups, ChoicesThatAreTextsAreTheSameInAllClasses) {
  EXPECT_THAT(options(behind(line("2F", "0") + circle("31", "Walls"), "Layer")),
              ElementsAre("--where \"Layer=0\"", "--where \"Layer=Walls\""));
}

TEST_F(ValueGroups, AnotherClassAtTheEndMakesTheChoicesAmbiguousToo) {
  EXPECT_THAT(options(behind(line("2F", "0") + line("30", "0") + circle("31", "0"), "Lineweight")),
              ElementsAre("--handle 2F,30,31"));
}

}  // namespace
}  // namespace velt::tool
