#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "samples/FloorPlan.h"
#include "tests/support/WholeDrawings.h"
#include "tests/tool/Drawings.h"
#include "tool/Commands.h"
#include "tool/Failure.h"

using namespace velt::tool;
using namespace velt::tests;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace {

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

}  // namespace

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
  EXPECT_THAT(shown({.selection = {.handles = {"2F"}}, .choices = true}), HasSubstr(" = Empty\n"));
  EXPECT_THAT(shown({.selection = {.handles = {"2F"}}}), Not(HasSubstr(" = Empty\n")));
}

TEST_F(ShowCommand, EntitiesLeftOutInBlocksAreMentioned) {
  EXPECT_THAT(shown({.selection = {.all = true}}), HasSubstr("1 entity inside block definitions left out"));
  EXPECT_THAT(shown({.selection = {.all = true, .inBlocks = true}}), Not(HasSubstr("left out")));
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
  EXPECT_EQ((*rowNamed(json, "Layer"))["objectId"], "2F");
  EXPECT_EQ((*rowNamed(json, "Layer"))["pDispatch"], "2F");
}

TEST_F(ShowCommand, WithoutASelectionTheUsageIsWrong) {
  EXPECT_THROW(shown({}), UsageFailure);
}

// --- dynamic rows, in the sample drawing ------------------------------------------------------------------

namespace {

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
      if (row["dispId"] == -23) rows[row["displayName"]] = row["text"];
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

}  // namespace

TEST_F(ShowSample, ADoorShowsItsNumberAsADynamicRow) {
  const nlohmann::json json = shown({.handles = handles("Doors", "INSERT", 1)});
  const auto found = std::find_if(json["rows"].begin(), json["rows"].end(),
                                  [](const nlohmann::json& row) { return row["displayName"] == "NUMBER"; });
  ASSERT_NE(found, json["rows"].end());
  EXPECT_EQ((*found)["dispId"], -23);
  EXPECT_EQ((*found)["value"], "D1");
  EXPECT_EQ((*found)["description"], "Number of the door");
  EXPECT_EQ((*found)["categoryName"], "Attributes");
  EXPECT_EQ((*found)["isEditable"], true);
  EXPECT_EQ((*found)["pDynamicProperty"], true);
  EXPECT_EQ((*found)["dynSources"].size(), 1U);
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
