#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "samples/FloorPlan.h"
#include "samples/Gallery.h"
#include "tests/support/WholeDrawings.h"
#include "tests/tool/Drawings.h"
#include "tool/Columns.h"
#include "tool/Commands.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

class ShowCommand : public testing::Test {
 protected:
  std::string shown(ShowRequest request) const {
    request.drawing = file_;
    std::ostringstream out;
    show(request, out);
    return out.str();
  }

  nlohmann::json shownJson(SelectionRequest selection) const {
    return nlohmann::json::parse(shown({.selection = std::move(selection), .json = true}));
  }

  static const nlohmann::json* rowNamed(const nlohmann::json& json, const std::string& name) {
    for (const auto& row : json["rows"]) {
      if (row["displayName"] == name) return &row;
    }
    return nullptr;
  }

 private:
  TemporaryFolder folder_;
  std::string file_ = folder_.write(
      "house.dxf", drawingOf({{"0"}, {"Walls", 1}, {"Empty"}},
                             line("2F", "Walls") + line("30", "Walls", 20.0) + circle("31", "0"),
                             pairs({{0, "BLOCK"}, {5, "50"}, {8, "0"}, {2, "Door"}}) + line("51", "0")
                                 + pairs({{0, "ENDBLK"}})));
};

TEST_F(ShowCommand, TheSelectionIsCountedByClass) {
  EXPECT_THAT(shown({.selection = {.all = true}}),
              HasSubstr("house.dxf: 3 entities selected (1 Circle, 2 Line)\n"));
  EXPECT_THAT(shown({.selection = {.handles = {"2F"}}}), HasSubstr("1 entity selected (1 Line)\n"));
}

TEST_F(ShowCommand, RowsStandUnderTheirCategory) {
  const std::string text = shown({.selection = {.handles = {"2F"}}});
  EXPECT_LT(text.find("\nGeneral\n"), text.find("\n  Layer "));
  EXPECT_LT(text.find("\nGeometry\n"), text.find("\n  Start X "));
  EXPECT_THAT(text, ContainsRegex("\n  Start X +1.500\n"));
}

TEST_F(ShowCommand, DifferingValuesVary) {
  EXPECT_THAT(shown({.selection = {.types = {"Line"}}}), ContainsRegex("\n  End X +\\*VARIES\\*"));
  EXPECT_THAT(shown({.selection = {.types = {"Line"}}}), ContainsRegex("\n  Start X +1.500\n"));
}

TEST_F(ShowCommand, ReadOnlyRowsAndRowsWithChoicesAreMarked) {
  const std::string text = shown({.selection = {.handles = {"2F"}}});
  EXPECT_THAT(text, ContainsRegex("\n  Layer +Walls +\\[choices\\]\n"));
  EXPECT_THAT(text, ContainsRegex("\n  Handle +2F +\\(read-only\\)\n"));
}

TEST_F(ShowCommand, ChoicesAreShownOnRequest) {
  EXPECT_THAT(shown({.selection = {.handles = {"2F"}}, .choices = true}), HasSubstr("\n      Empty\n"));
  EXPECT_THAT(shown({.selection = {.handles = {"2F"}}}), Not(HasSubstr("\n      Empty\n")));
}

TEST_F(ShowCommand, EntitiesLeftOutInBlocksAreMentioned) {
  EXPECT_THAT(shown({.selection = {.all = true}}), HasSubstr("1 entity inside block definitions left out"));
  EXPECT_THAT(shown({.selection = {.all = true, .inBlocks = true}}), Not(HasSubstr("left out")));
}

TEST_F(ShowCommand, ChoicesAreShownByNameWithoutTheNumbersThatStandForThem) {
  const std::string text = shown({.selection = {.handles = {"2F"}}, .choices = true});
  EXPECT_THAT(text, HasSubstr("\n      ByLayer\n"));
  EXPECT_THAT(text, Not(ContainsRegex("\n      -?[0-9]+ = ")));
}

TEST_F(ShowCommand, TheValuesBehindAVaryingRowAreShownWithTheWayToSelectThem) {
  const std::string text = shown({.selection = {.types = {"Line"}}, .values = true});
  EXPECT_THAT(text, HasSubstr("\n      1 of them  10.000  --where \"'End X'=10\"\n"
                              "      1 of them  20.000  --where \"'End X'=20\"\n"));
  EXPECT_THAT(text, HasSubstr("\n      1 of them  2F  --where \"Handle=2F\"\n"));
  EXPECT_THAT(shown({.selection = {.types = {"Line"}}}), Not(HasSubstr("of them")));
}

TEST(ShowCommandOnManyEntities, NumbersAndTextsOfTheValuesStandBelowEachOther) {
  const TemporaryFolder folder;
  std::string entities = line("2F", "Walls");
  for (int i = 10; i < 20; ++i)
    entities += line(std::to_string(i), "0");
  std::ostringstream out;
  show({.drawing = folder.write("house.dxf", drawingOf({{"0"}, {"Walls"}}, entities)),
        .selection = {.all = true},
        .values = true},
       out);
  EXPECT_THAT(out.str(), HasSubstr("\n      10 of them  0      --where \"Layer=0\"\n"
                                   "       1 of them  Walls  --where \"Layer=Walls\"\n"));
}

TEST_F(ShowCommand, JsonHasTheValuesBehindAVaryingRowWithTheirEntities) {
  const nlohmann::json json =
      nlohmann::json::parse(shown({.selection = {.types = {"Line"}}, .json = true, .values = true}));
  const nlohmann::json& values = (*rowNamed(json, "End X"))["values"];
  ASSERT_EQ(values.size(), 2U);
  EXPECT_EQ(values[1], (nlohmann::json{{"value", 20.0},
                                       {"text", "20.000"},
                                       {"count", 1},
                                       {"handles", {"30"}},
                                       {"select", "--where \"'End X'=20\""}}));
  EXPECT_FALSE(rowNamed(json, "Layer")->contains("values")) << "one value is in the row itself";
}

// Squares around each other, of which a hatch would have to compare each with each.
std::string hatchOfSquares(int count) {
  std::string hatch = pairs({{0, "HATCH"},
                             {5, "40"},
                             {100, "AcDbEntity"},
                             {8, "0"},
                             {100, "AcDbHatch"},
                             {10, "0"},
                             {20, "0"},
                             {30, "0"},
                             {2, "SOLID"},
                             {70, "1"},
                             {71, "0"},
                             {91, std::to_string(count)}});
  for (int half = 1; half <= count; ++half) {
    const std::string far = std::to_string(half);
    const std::string near = "-" + far;
    hatch += pairs({{92, "3"},
                    {72, "0"},
                    {73, "1"},
                    {93, "4"},
                    {10, near},
                    {20, near},
                    {10, far},
                    {20, near},
                    {10, far},
                    {20, far},
                    {10, near},
                    {20, far},
                    {97, "0"}});
  }
  return hatch + pairs({{75, "0"}, {76, "1"}, {98, "0"}});
}

TEST(ShowCommandOnLargeHatches, SaysWhyAValueWasNotComputed) {
  const TemporaryFolder folder;
  const auto shown = [&](int squares, bool json) {
    ShowRequest request{.selection = {.all = true}, .json = json};
    request.drawing = folder.write("hatch.dxf", drawingOf({{"0"}}, hatchOfSquares(squares)));
    std::ostringstream out;
    show(request, out);
    return out.str();
  };
  EXPECT_THAT(shown(3, false), ContainsRegex("Area +24\\.000"));
  const std::string text = shown(2'500, false);
  EXPECT_THAT(text, ContainsRegex("Area +\\(no value: note [0-9]\\)"));
  EXPECT_THAT(text, HasSubstr("Not computed: too many steps would be needed."));
  EXPECT_THAT(shown(2'500, true),
              HasSubstr("\"noValueReason\": \"Not computed: too many steps would be needed.\""));
}

TEST_F(ShowCommand, NoLineIsLongerThanTheTerminal) {
  const std::string text =
      shown({.selection = {.types = {"Line"}}, .choices = true, .values = true, .terminal = {.width = 20}});
  std::istringstream lines(text);
  std::string line;
  std::getline(lines, line);  // the heading is a sentence
  while (std::getline(lines, line)) {
    const bool isSentence = line.find("--in-blocks") != std::string::npos;
    EXPECT_TRUE(isSentence || columns(line) <= 20U) << line;
  }
}

TEST_F(ShowCommand, ATerminalWithColorSetsHeadingsApart) {
  EXPECT_THAT(shown({.selection = {.handles = {"2F"}}, .terminal = {.hasColor = true}}),
              HasSubstr("\n\033[1mGeneral\033[0m\n"));
}

TEST_F(ShowCommand, EntitiesOnLockedLayersAreCounted) {
  const TemporaryFolder folder;
  const std::string file =
      folder.write("shut.dxf", drawingOf({{"0"}, {"Walls", 1, 4}}, line("2F", "Walls") + line("30", "0")));
  std::ostringstream text, json, none;
  show({.drawing = file, .selection = {.all = true}}, text);
  EXPECT_THAT(text.str(), HasSubstr("\nOn locked layers, which are not written to: 1 entity\n"));
  show({.drawing = file, .selection = {.all = true}, .json = true}, json);
  EXPECT_EQ(nlohmann::json::parse(json.str())["selection"]["locked"], 1);
  show({.drawing = file, .selection = {.layers = {"0"}}}, none);
  EXPECT_THAT(none.str(), Not(HasSubstr("locked")));
}

TEST_F(ShowCommand, RowsOfOneNameAreNumberedAsTheCommandLineTakesThem) {
  const TemporaryFolder folder;
  const std::string file = folder.write("gallery.dxf", velt::samples::galleryDrawing());
  std::ostringstream text;
  show({.drawing = file, .selection = {.types = {"LWPolyline"}}}, text);
  EXPECT_THAT(text.str(), ContainsRegex("\n  Vertex X#1 +70.0000\n"));
  EXPECT_THAT(text.str(), ContainsRegex("\n  Vertex X#3 +80.0000\n"));
  EXPECT_THAT(text.str(), ContainsRegex("\n  Area +67"));
}

TEST_F(ShowCommand, ARowThatTheseEntitiesDoNotLetBeEditedSaysWhy) {
  const TemporaryFolder folder;
  const std::string file = folder.write("plan.dxf", velt::samples::sampleFloorPlan());
  std::ostringstream text;
  show({.drawing = file, .selection = {.types = {"DimRotated"}}}, text);
  EXPECT_THAT(text.str(), ContainsRegex("\n  Dim style .*\\(read-only: note 1\\)\n"));
  EXPECT_THAT(text.str(), HasSubstr("\nNote 1: the dimension is drawn by a block"));
  EXPECT_THAT(text.str(), Not(HasSubstr("Note 3"))) << "rows share them";
}

TEST_F(ShowCommand, ARowThatEntitiesRefuseSaysOfHowManyAndWhy) {
  const TemporaryFolder folder;
  const std::string file = folder.write("old.dxf", oldDrawing());
  std::ostringstream text, json;
  show({.drawing = file, .selection = {.all = true}}, text);
  EXPECT_THAT(text.str(), ContainsRegex("\n  Lineweight .*\\(refused by 1 of 1: note [0-9]\\)\n"));
  EXPECT_THAT(text.str(), HasSubstr("Note 1: DXF R12 cannot store this property; DXF R13 and later can"));
  EXPECT_THAT(text.str(), ContainsRegex("\n  Layer +0 +\\[choices\\]\n"));
  show({.drawing = file, .selection = {.all = true}, .json = true}, json);
  const nlohmann::json parsed = nlohmann::json::parse(json.str());
  EXPECT_EQ((*rowNamed(parsed, "Lineweight"))["refused"]["count"], 1);
}

TEST_F(ShowCommand, AnEmptySelectionIsNotAnError) {
  EXPECT_THAT(shown({.selection = {.layers = {"Empty"}}}), HasSubstr("nothing selected"));
  const nlohmann::json json = shownJson({.layers = {"Empty"}});
  EXPECT_EQ(json["selection"]["count"], 0);
  EXPECT_TRUE(json["rows"].empty());
}

TEST_F(ShowCommand, JsonNamesDrawingSelectionAndRows) {
  const nlohmann::json json = shownJson({.all = true});
  EXPECT_THAT(json["drawing"].get<std::string>(), HasSubstr("house.dxf"));
  EXPECT_EQ(json["selection"]["count"], 3);
  EXPECT_EQ(json["selection"]["classes"], (nlohmann::json{{"Circle", 1}, {"Line", 2}}));
  ASSERT_NE(rowNamed(json, "Layer"), nullptr);
  EXPECT_EQ((*rowNamed(json, "Layer"))["isVaries"], true);
}

TEST_F(ShowCommand, JsonValuesAreNatural) {
  const nlohmann::json json = shownJson({.handles = {"2F"}});
  EXPECT_EQ((*rowNamed(json, "Start X"))["value"], 1.5);
  EXPECT_EQ((*rowNamed(json, "Layer"))["value"], "Walls");
  EXPECT_FALSE(rowNamed(json, "Layer")->contains("objectId")) << "it concerns only who develops palettes";
}

TEST_F(ShowCommand, JsonHasEveryFieldOfTheRecordsWhereItIsAskedFor) {
  const nlohmann::json json =
      nlohmann::json::parse(shown({.selection = {.handles = {"2F"}}, .json = true, .debug = true}));
  EXPECT_EQ((*rowNamed(json, "Layer"))["objectId"], "2F");
  EXPECT_EQ((*rowNamed(json, "Layer"))["pDispatch"], "2F");
  EXPECT_EQ((*rowNamed(json, "Layer"))["unit"], nullptr);
}

TEST_F(ShowCommand, WithoutASelectionTheUsageIsWrong) {
  EXPECT_THROW(shown({}), UsageFailure);
}

// --- dynamic rows, in the sample drawing ------------------------------------------------------------------

class ShowSample : public testing::Test {
 protected:
  nlohmann::json shown(SelectionRequest selection) const {
    std::ostringstream out;
    show({.drawing = file_, .selection = std::move(selection), .json = true}, out);
    return nlohmann::json::parse(out.str());
  }
  // Their texts by name.
  std::map<std::string, std::string> dynamicRows(SelectionRequest selection) const {
    std::map<std::string, std::string> rows;
    const nlohmann::json json = shown(std::move(selection));
    for (const auto& row : json["rows"]) {
      if (row["isDynamic"] == true) rows[row["displayName"]] = row["text"];
    }
    return rows;
  }
  // The first entities on a layer.
  std::vector<std::string> handles(const std::string& layer, const std::string& type,
                                   std::size_t count) const {
    std::ostringstream out;
    list({.drawing = file_, .selection = {.layers = {layer}, .types = {type}}, .json = true}, out);
    std::vector<std::string> found;
    const nlohmann::json json = nlohmann::json::parse(out.str());
    for (std::size_t i = 0; i < count; ++i)
      found.push_back(json["entities"].at(i)["handle"]);
    return found;
  }
  using Rows = std::map<std::string, std::string>;

 private:
  TemporaryFolder folder_;
  std::string file_ = folder_.write("plan.dxf", velt::samples::sampleFloorPlan());
};

TEST_F(ShowSample, ADoorShowsItsNumberAsADynamicRow) {
  const nlohmann::json json = shown({.handles = handles("Doors", "INSERT", 1)});
  const auto found = std::find_if(json["rows"].begin(), json["rows"].end(),
                                  [](const nlohmann::json& row) { return row["displayName"] == "NUMBER"; });
  ASSERT_NE(found, json["rows"].end());
  EXPECT_EQ((*found)["isDynamic"], true);
  EXPECT_EQ((*found)["value"], "D1");
  EXPECT_EQ((*found)["description"], "Number of the door");
  EXPECT_EQ((*found)["categoryName"], "Attributes");
  EXPECT_EQ((*found)["isEditable"], true);
}

TEST_F(ShowSample, DoorsOfBothShapesShowTheirNumbersTogether) {
  EXPECT_EQ(dynamicRows({.layers = {"Doors"}}), (Rows{{"NUMBER", "*VARIES*"}}));
}

TEST_F(ShowSample, TwoLinesShowNoDynamicRowsAndOneShowsItsExtendedData) {
  const std::vector<std::string> lines = handles("Electrical", "LINE", 2);
  EXPECT_EQ(dynamicRows({.handles = lines}), Rows{});
  EXPECT_EQ(dynamicRows({.handles = {lines[0]}}),
            (Rows{{"VELT_INVENTORY 1", "Lamp, 12 W"}, {"VELT_INVENTORY 2", "4720"}}));
  EXPECT_EQ(dynamicRows({.handles = {lines[1]}}), Rows{});
}

TEST_F(ShowCommand, EveryClassAndTypeOfWholeDrawingsAnswers) {
  const TemporaryFolder folder;
  forEachDrawing([&](const WholeDrawing& whole) {
    const std::string file = folder.write(whole.name, whole.bytes);
    std::ostringstream out;
    show({.drawing = file, .selection = {.all = true}, .json = true}, out);
    const nlohmann::json json = nlohmann::json::parse(out.str());
    EXPECT_EQ(json["rows"].empty(), json["selection"]["count"] == 0);
    for (const auto& [name, count] : json["selection"]["classes"].items()) {
      std::ostringstream ofClass;
      show({.drawing = file, .selection = {.types = {name}}, .json = true}, ofClass);
      EXPECT_GE(nlohmann::json::parse(ofClass.str())["selection"]["count"], count) << name;
    }
  });
}

TEST_F(ShowCommand, ATerminalWithColorSetsMarksApartWhereTheyFit) {
  const auto lineOf = [&](const std::string& name, Terminal terminal) {
    terminal.hasColor = true;
    std::istringstream lines(shown({.selection = {.handles = {"2F"}}, .terminal = terminal}));
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("  " + name + " ")) return line;
    }
    return "no row " + name;
  };
  const std::string layer = lineOf("Layer", {});
  const std::size_t marks = layer.find("\033[2m");
  ASSERT_NE(marks, std::string::npos) << layer;
  const std::string pair = layer.substr(0, marks);
  EXPECT_THAT(pair, ContainsRegex("^  Layer +Walls +$"));
  EXPECT_EQ(layer.substr(marks), "\033[2m  [choices]\033[0m");
  // Nothing is left to be set apart, or not the whole value.
  EXPECT_EQ(lineOf("Layer", {.width = pair.size() + 5}), pair + "\033[2m  [c\u2026\033[0m");
  EXPECT_THAT(lineOf("Layer", {.width = pair.size()}), Not(HasSubstr("\033")));
  EXPECT_THAT(lineOf("Layer", {.width = 14}), Not(HasSubstr("\033")));
}

TEST_F(ShowCommand, ATerminalWithColorSetsNothingApartBehindAValueWithoutMarks) {
  const std::string text = shown({.selection = {.handles = {"2F"}}, .terminal = {.hasColor = true}});
  EXPECT_THAT(text, Not(HasSubstr("\033[2m\033[0m")));
  EXPECT_THAT(text, ContainsRegex("\n  Start X +1.500\n"));
}

TEST_F(ShowCommand, JsonSaysWhyARowCannotBeEditedNow) {
  const TemporaryFolder folder;
  const std::string file = folder.write("plan.dxf", velt::samples::sampleFloorPlan());
  std::ostringstream out;
  show({.drawing = file, .selection = {.types = {"DimRotated"}}, .json = true}, out);
  const nlohmann::json json = nlohmann::json::parse(out.str());
  const nlohmann::json& style = *rowNamed(json, "Dim style");
  EXPECT_EQ(style["isEditable"], false);
  EXPECT_EQ(style["readOnlyReason"], "the dimension is drawn by a block, which is not drawn anew here");
  EXPECT_FALSE(style.contains("refused"));
  const nlohmann::json& handle = *rowNamed(json, "Handle");
  EXPECT_EQ(handle["isEditable"], false);
  EXPECT_FALSE(handle.contains("readOnlyReason")) << "it can never be edited";
  EXPECT_FALSE(rowNamed(json, "Layer")->contains("readOnlyReason"));
}

TEST_F(ShowCommand, WhatOnlyOneEntityIsMentionedForIsMentionedInJsonToo) {
  const nlohmann::json json = shownJson({.all = true});
  EXPECT_EQ(json["selection"]["leftOutInBlocks"], 1);
  EXPECT_FALSE(json["selection"].contains("locked"));
  EXPECT_FALSE(shownJson({.handles = {"2F"}})["selection"].contains("leftOutInBlocks"));
}

TEST(ShowCommandOnManyEntities, TwentyValuesAreListedAndTheOthersCounted) {
  const TemporaryFolder folder;
  const auto shownLines = [&](int count) {
    std::string entities;
    for (int i = 0; i < count; ++i)
      entities += line(std::to_string(20 + i), "0", 10.0 + i);
    std::ostringstream out;
    show({.drawing = folder.write("house.dxf", drawingOf({{"0"}}, entities)),
          .selection = {.all = true},
          .values = true},
         out);
    return out.str();
  };
  const std::string twenty = shownLines(20);
  EXPECT_THAT(twenty, HasSubstr("      1 of them  29.000  --where \"'End X'=29\"\n"));
  EXPECT_THAT(twenty, Not(HasSubstr("other values")));
  const std::string more = shownLines(21);
  EXPECT_THAT(more, HasSubstr("      1 of them  29.000  --where \"'End X'=29\"\n"
                              "      and 1 other values (--json has them all)\n"));
  EXPECT_THAT(more, Not(HasSubstr("'End X'=30")));
}

TEST(ShowCommandOnManyEntities, MarksStandBelowEachOtherBehindFortyColumnsOfAValue) {
  const TemporaryFolder folder;
  const auto rowsOf = [&](std::size_t columns) {
    std::ostringstream out;
    show(
        {.drawing = folder.write("text.dxf", drawingOf({{"0"}}, textEntity("2F", std::string(columns, 'x')))),
         .selection = {.all = true}},
        out);
    return out.str();
  };
  const auto layer = [](std::size_t blanks) {
    return ContainsRegex("\n  Layer +0" + std::string(blanks, ' ') + "  \\[choices\\]\n");
  };
  EXPECT_THAT(rowsOf(39), layer(38));
  EXPECT_THAT(rowsOf(40), layer(39));
  EXPECT_THAT(rowsOf(41), layer(39));
  EXPECT_THAT(rowsOf(60), layer(39));
}

}  // namespace
}  // namespace velt::tool
