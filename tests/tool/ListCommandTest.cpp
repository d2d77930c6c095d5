#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/tool/Drawings.h"
#include "tool/Commands.h"

namespace velt::tool {
namespace {

using namespace velt::tests;

class ListCommand : public testing::Test {
 protected:
  std::string listed(ListRequest request) const {
    request.drawing = file_;
    std::ostringstream out;
    list(request, out);
    return out.str();
  }

 private:
  TemporaryFolder folder_;
  std::string file_ = folder_.write(
      "house.dxf", drawingOf({{"0"}, {"Walls"}}, line("2F", "Walls") + circle("131", "0")
                                                     + pairs({{0, "3DFACE"}, {5, "33"}, {8, "Walls"}})));
};

TEST_F(ListCommand, EntitiesAreListedInColumns) {
  EXPECT_EQ(listed({}),
            "Handle  Class   Type    Layer\n"
            "2F      Line    LINE    Walls\n"
            "131     Circle  CIRCLE  0\n"
            "33      3DFace  3DFACE  Walls\n");
}

TEST_F(ListCommand, ASelectionNarrowsTheList) {
  EXPECT_EQ(listed({.selection = {.layers = {"0"}}}),
            "Handle  Class   Type    Layer\n"
            "131     Circle  CIRCLE  0\n");
}

TEST_F(ListCommand, JsonHasOneObjectPerEntity) {
  const nlohmann::json json = nlohmann::json::parse(listed({.json = true}));
  EXPECT_EQ(json["count"], 3);
  EXPECT_EQ(json["entities"][0],
            (nlohmann::json{{"handle", "2F"}, {"class", "Line"}, {"type", "LINE"}, {"layer", "Walls"}}));
}

TEST_F(ListCommand, ValuesAreThoseOfEachEntityByItself) {
  const nlohmann::json json = nlohmann::json::parse(listed({.json = true, .values = true}));
  const auto valueOf = [&](std::size_t entity, const std::string& shown) {
    for (const auto& value : json["entities"][entity]["values"]) {
      if (value["displayName"] == shown) return value["value"];
    }
    return nlohmann::json("no such value");
  };
  EXPECT_EQ(valueOf(0, "Layer"), "Walls");
  EXPECT_EQ(valueOf(0, "Start X"), 1.5);
  EXPECT_EQ(valueOf(1, "Radius"), 2.5);
  EXPECT_EQ(valueOf(0, "Radius"), "no such value");
}

TEST_F(ListCommand, ValuesHaveTheirUnit) {
  const nlohmann::json json = nlohmann::json::parse(listed({.json = true, .values = true}));
  std::map<std::string, nlohmann::json> units;
  for (const auto& value : json["entities"][1]["values"])
    units[value["displayName"]] = value["unit"];
  EXPECT_EQ(units["Radius"], "drawing units");
  EXPECT_EQ(units["Area"], "square drawing units");
  EXPECT_EQ(units["Center X"], "drawing units");
  EXPECT_EQ(units["Normal X"], nullptr) << "a direction has no length";
  EXPECT_EQ(units["Lineweight"], "hundredths of a millimeter");
  EXPECT_EQ(units["Layer"], nullptr);
}

TEST_F(ListCommand, ValuesAreAlsoToldAsTheyAreShown) {
  const nlohmann::json json = nlohmann::json::parse(listed({.json = true, .values = true}));
  bool isTold = false;
  for (const auto& value : json["entities"][0]["values"]) {
    ASSERT_TRUE(value.contains("text"));
    if (value["displayName"] != "Lineweight") continue;
    EXPECT_EQ(value["text"], "ByLayer");
    isTold = true;
  }
  EXPECT_TRUE(isTold);
}

TEST(ListOfADamagedDrawing, TellsOfSharedHandles) {
  TemporaryFolder folder;
  const std::string file = folder.write("twice.dxf", drawingOf({{"0"}}, line("2F", "0") + circle("2F", "0")));
  std::ostringstream out;
  list({.drawing = file}, out);
  EXPECT_THAT(out.str(), testing::HasSubstr(
                             "\nThe drawing is damaged: several entities have the handle 2F (2 entities)"));
  std::ostringstream json;
  list({.drawing = file, .json = true}, json);
  EXPECT_EQ(nlohmann::json::parse(json.str())["sharedHandles"], nlohmann::json{"2F"});
}

TEST(ListOfADamagedDrawing, ALayersNameStaysOnItsLine) {
  TemporaryFolder folder;
  const std::string file = folder.write("lines.dxf", drawingOf({{"0"}}, line("2F", "A\\U+000AFAKE  Line")));
  std::ostringstream out;
  list({.drawing = file}, out);
  const std::string text = out.str();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2);
}

TEST(ListOfLongHandles, ColumnsAreAsWideAsWhatStandsInThem) {
  TemporaryFolder folder;
  const std::string file = folder.write(
      "long.dxf", drawingOf({{"0"}}, line("1F", "0") + line("1234ABCD", "T\\U+00FCren") + line("2F", "0")));
  std::ostringstream out;
  list({.drawing = file}, out);
  EXPECT_EQ(out.str(),
            "Handle    Class  Type  Layer\n"
            "1F        Line   LINE  0\n"
            "1234ABCD  Line   LINE  T\u00FCren\n"
            "2F        Line   LINE  0\n");
}

TEST(ListWithBlocks, WhatIsLeftOutIsCounted) {
  TemporaryFolder folder;
  const auto fileWith = [&](const std::string& inBlock) {
    return folder.write("door.dxf",
                        drawingOf({{"0"}}, line("1F", "0"),
                                  pairs({{0, "BLOCK"}, {5, "50"}, {8, "0"}, {2, "Door"}, {70, "0"}}) + inBlock
                                      + pairs({{0, "ENDBLK"}})));
  };
  const auto jsonOf = [](const std::string& file) {
    std::ostringstream out;
    list({.drawing = file, .json = true}, out);
    return out.str();
  };
  const std::string one = fileWith(line("51", "0"));
  EXPECT_EQ(jsonOf(one), "{\n  \"drawing\": \"" + one
                             + "\",\n  \"count\": 1,\n  \"entities\": [\n    {\n"
                               "      \"handle\": \"1F\",\n      \"class\": \"Line\",\n"
                               "      \"type\": \"LINE\",\n      \"layer\": \"0\"\n    }\n  ],\n"
                               "  \"leftOutInBlocks\": 1\n}\n");
  std::ostringstream out;
  list({.drawing = one}, out);
  EXPECT_EQ(out.str(),
            "Handle  Class  Type  Layer\n"
            "1F      Line   LINE  0\n"
            "\n1 entity inside block definitions left out (--in-blocks includes them)\n");
  EXPECT_FALSE(nlohmann::json::parse(jsonOf(fileWith(""))).contains("leftOutInBlocks"));
}

}  // namespace
}  // namespace velt::tool
