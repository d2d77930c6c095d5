#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "palette/Palette.h"
#include "samples/FloorPlan.h"
#include "tests/support/WholeDrawings.h"
#include "tests/tool/Drawings.h"
#include "tool/Commands.h"
#include "tool/Failure.h"
#include "tool/RowJson.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::HasSubstr;
using testing::StartsWith;

class TableCommand : public testing::Test {
 protected:
  std::string shown(TableRequest request) const {
    request.drawing = file_;
    std::ostringstream out;
    table(request, out);
    return out.str();
  }
  std::string failureOf(const TableRequest& request) const {
    try {
      shown(request);
    } catch (const Failure& failure) {
      return failure.what();
    }
    return "";
  }
  static std::vector<nlohmann::ordered_json> lines(const std::string& text) {
    std::vector<nlohmann::ordered_json> made;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
      made.push_back(nlohmann::ordered_json::parse(line));
    return made;
  }

 private:
  TemporaryFolder folder_;
  std::string file_ = folder_.write(
      "house.dxf", drawingOf({{"0"}, {"Walls, old"}}, line("2F", "Walls, old") + circle("30", "0")
                                                          + pairs({{0, "LWPOLYLINE"},
                                                                   {5, "31"},
                                                                   {100, "AcDbEntity"},
                                                                   {8, "0"},
                                                                   {100, "AcDbPolyline"},
                                                                   {90, "2"},
                                                                   {70, "0"},
                                                                   {10, "1"},
                                                                   {20, "2"},
                                                                   {10, "7"},
                                                                   {20, "8"}})));
};

TEST_F(TableCommand, HasOneLineForEachEntityWithTheColumnsAskedFor) {
  EXPECT_EQ(shown({.selection = {.all = true}, .columns = {"Handle", "layer", "Radius"}}),
            "Handle  layer       Radius\n"
            "2F      Walls, old\n"
            "30      0           2.500\n"
            "31      0\n");
}

TEST_F(TableCommand, SeveralValuesOfOneNameStandInOneCell) {
  EXPECT_EQ(shown({.selection = {.handles = {"31"}},
                   .columns = {"Vertex X", "Vertex X#2"},
                   .format = TableFormat::tsv}),
            "Vertex X\tVertex X#2\n1.000; 7.000\t7.000\n");
}

TEST_F(TableCommand, CsvQuotesWhatNeedsIt) {
  EXPECT_EQ(
      shown({.selection = {.types = {"Line"}}, .columns = {"Layer", "@class"}, .format = TableFormat::csv}),
      "Layer,@class\n\"Walls, old\",Line\n");
}

TEST_F(TableCommand, JsonIsALineForEachEntityWithNaturalValues) {
  const auto made = lines(shown(
      {.selection = {.all = true}, .columns = {"Radius", "Vertex X", "@type"}, .format = TableFormat::json}));
  ASSERT_EQ(made.size(), 3U);
  EXPECT_EQ(made[0].dump(),
            R"({"handle":"2F","class":"Line","values":{"Radius":null,"Vertex X":null,"@type":"LINE"}})");
  EXPECT_EQ(made[1]["values"]["Radius"], 2.5);
  EXPECT_EQ(made[2]["values"]["Vertex X"], (nlohmann::ordered_json{1.0, 7.0}));
}

TEST_F(TableCommand, AllColumnsAreThoseOfAllEntitiesByCategory) {
  const std::string text =
      shown({.selection = {.all = true}, .columns = {"all"}, .format = TableFormat::csv});
  EXPECT_THAT(text, StartsWith("@handle,@class,Color,Layer,"));
  EXPECT_THAT(text, HasSubstr(",Radius,"));
  EXPECT_EQ(text, shown({.selection = {.all = true}, .format = TableFormat::csv})) << "and without --columns";
  const auto made = lines(shown({.selection = {.handles = {"30"}}, .format = TableFormat::json}));
  EXPECT_EQ(made[0]["values"]["Radius"], 2.5);
  EXPECT_FALSE(made[0]["values"].contains("Vertex X")) << "what an entity does not have is not there";
}

TEST_F(TableCommand, AColumnThatNoEntityHasIsAFailureAndPrintsNothing) {
  EXPECT_EQ(failureOf({.selection = {.all = true}, .columns = {"Layer", "Raduis"}}),
            "no selected entity has a property Raduis; did you mean Radius?");
  EXPECT_NE(failureOf({.selection = {.all = true}, .columns = {"Raduis"}, .format = TableFormat::json}), "");
}

TEST_F(TableCommand, AnEmptySelectionIsATableWithoutLines) {
  EXPECT_EQ(shown({.selection = {.types = {"Hatch"}}, .columns = {"Layer"}}), "Layer\n");
  EXPECT_EQ(shown({.selection = {.types = {"Hatch"}}, .format = TableFormat::json}), "");
}

TEST_F(TableCommand, NoEntityLacksAColumnInAnEmptySelection) {
  const SelectionRequest none{.types = {"Hatch"}};
  EXPECT_EQ(shown({.selection = none, .columns = {"Layer", "Frobs"}}), "Layer  Frobs\n");
  EXPECT_EQ(shown({.selection = none, .columns = {"Layer", "Frobs"}, .format = TableFormat::csv}),
            "Layer,Frobs\n");
  EXPECT_EQ(shown({.selection = none, .columns = {"Layer", "Frobs"}, .format = TableFormat::json}), "");
}

TEST_F(TableCommand, AllIsAColumnLikeOthersBesideAnother) {
  EXPECT_EQ(failureOf({.selection = {.all = true}, .columns = {"all", "Layer"}}),
            "no selected entity has a property all");
}

TEST(Table, CsvQuotesBlanksAtEitherEndAndQuotes) {
  const TemporaryFolder folder;
  const std::string file = folder.write(
      "texts.dxf", drawingOf({{"0"}}, textEntity("2F", " before") + textEntity("30", "after ")
                                          + textEntity("31", "in between") + textEntity("32", "3\" pipe")));
  std::ostringstream out;
  table({.drawing = file, .selection = {.all = true}, .columns = {"Contents"}, .format = TableFormat::csv},
        out);
  EXPECT_EQ(out.str(), "Contents\n\" before\"\n\"after \"\nin between\n\"3\"\" pipe\"\n");
}

TEST(Table, JsonTellsTheUnitOfEachValueWhereTheyDiffer) {
  // An attribute stands under the name of a property of its reference.
  const TemporaryFolder folder;
  const std::string file = folder.write(
      "house.dxf", drawingOf({{"0"}}, reference(0x40, "Door", "Rotation", "askew"), emptyBlock("Door")));
  std::ostringstream out;
  table({.drawing = file,
         .selection = {.all = true},
         .columns = {"Rotation", "Columns"},
         .format = TableFormat::json},
        out);
  EXPECT_EQ(out.str(),
            R"({"handle":"40","class":"BlockReference","values":{"Rotation":["askew",0.0],"Columns":1},)"
            R"("units":{"Rotation":[null,"radians"]}})"
            "\n");
}

TEST_F(TableCommand, WithoutASelectionTheUsageIsWrong) {
  EXPECT_THROW(shown({}), UsageFailure);
}

TEST_F(TableCommand, NoLineIsLongerThanTheTerminal) {
  std::istringstream text(shown({.selection = {.all = true}, .terminal = {.width = 30}}));
  for (std::string line; std::getline(text, line);)
    EXPECT_LE(line.size(), 32U) << "the ellipsis is three bytes: " << line;
}

TEST(Table, HasTheAttributesOfEachDoorAlone) {
  const TemporaryFolder folder;
  const std::string file = folder.write("plan.dxf", velt::samples::sampleFloorPlan());
  std::ostringstream out;
  table({.drawing = file,
         .selection = {.layers = {"Doors", "Walls"}},
         .columns = {"Layer", "NUMBER"},
         .format = TableFormat::csv},
        out);
  EXPECT_THAT(out.str(), HasSubstr("\nDoors,D1\n"));
  EXPECT_THAT(out.str(), HasSubstr("\nWalls,\n")) << "beside entities that have none";
}

TEST_F(TableCommand, JsonTellsTheUnitsOfColumnsThatHaveOne) {
  const auto made = lines(shown({.selection = {.all = true},
                                 .columns = {"Radius", "Layer", "Vertex X", "Lineweight"},
                                 .format = TableFormat::json}));
  const std::string weight = R"("Lineweight":"hundredths of a millimeter")";
  std::set<std::string> units;
  for (const auto& line : made)
    units.insert(line["units"].dump());
  EXPECT_THAT(
      units, testing::UnorderedElementsAre("{" + weight + "}", R"({"Radius":"drawing units",)" + weight + "}",
                                           R"({"Vertex X":"drawing units",)" + weight + "}"));
}

TEST_F(TableCommand, JsonNamesTheChoicesThatAreNumbers) {
  const auto made = lines(shown({.selection = {.handles = {"30"}},
                                 .columns = {"Lineweight", "Radius", "Layer"},
                                 .format = TableFormat::json}));
  ASSERT_EQ(made.size(), 1U);
  EXPECT_EQ(made[0]["values"]["Lineweight"], -1);
  EXPECT_EQ(made[0]["names"].dump(), R"({"Lineweight":"ByLayer"})");
  EXPECT_FALSE(
      lines(shown({.selection = {.handles = {"30"}}, .columns = {"Radius"}, .format = TableFormat::json}))[0]
          .contains("names"));
}

// The table against the palette of each entity alone.
TEST(Table, SaysOfWholeDrawingsWhatThePaletteOfEachEntitySays) {
  const TemporaryFolder folder;
  forEachDrawing([&](const WholeDrawing& whole) {
    const std::string file = folder.write(whole.name, whole.bytes);
    std::ostringstream listed, tabled;
    list({.drawing = file, .selection = {.all = true}, .json = true, .values = true}, listed);
    table({.drawing = file, .selection = {.all = true}, .format = TableFormat::json}, tabled);
    const auto entities = nlohmann::ordered_json::parse(listed.str())["entities"];
    std::istringstream lines(tabled.str());
    for (const auto& entity : entities) {
      std::string line;
      ASSERT_TRUE(std::getline(lines, line));
      const auto made = nlohmann::ordered_json::parse(line);
      ASSERT_EQ(made["handle"], entity["handle"]);
      std::size_t count = 0;
      for (const auto& [name, value] : made["values"].items())
        count += value.is_array() ? value.size() : 1;
      ASSERT_EQ(count, entity["values"].size()) << "every row is somewhere";
      for (const auto& row : entity["values"]) {
        const std::string label = row["displayName"];
        if (!made["values"].contains(label) || made["values"][label].is_array()) continue;
        if (made["values"].contains(row["name"].get<std::string>())) continue;
        EXPECT_EQ(made["values"][label], row["value"]) << entity["handle"] << " " << label;
      }
    }
  });
}

}  // namespace
}  // namespace velt::tool
