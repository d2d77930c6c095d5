#include "tool/DrawingInfo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "embedded/database/Entity.h"
#include "tests/tool/Drawings.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::ElementsAre;
using testing::IsEmpty;
using velt::database::Drawing;

std::string insert(const std::string& handle, const std::string& block) {
  return pairs({{0, "INSERT"},
                {5, handle},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbBlockReference"},
                {2, block},
                {10, "0"},
                {20, "0"}});
}

std::unique_ptr<Drawing> drawingWithParts() {
  std::string entities = line("2F", "Walls") + line("30", "Forgotten") + insert("31", "Door")
                         + insert("32", "Door")
                         + pairs({{0, "SPACESHIP"}, {5, "33"}, {100, "AcDbEntity"}, {8, "0"}});
  entities += pairs({{0, "POINT"},
                     {5, "34"},
                     {100, "AcDbEntity"},
                     {8, "0"},
                     {100, "AcDbPoint"},
                     {10, "0"},
                     {20, "0"},
                     {1001, "PARTS"},
                     {1000, "5"},
                     {1001, "PARTS"},
                     {1001, "LABELS"}});
  const std::string blocks =
      pairs({{0, "BLOCK"}, {5, "50"}, {8, "0"}, {2, "Door"}, {70, "0"}}) + line("51", "Walls")
      + insert("52", "*U1") + pairs({{0, "ENDBLK"}})
      + pairs({{0, "BLOCK"}, {5, "53"}, {8, "0"}, {2, "*U1"}, {70, "1"}}) + pairs({{0, "ENDBLK"}})
      + pairs({{0, "BLOCK"}, {5, "54"}, {8, "0"}, {2, "Site"}, {70, "4"}}) + pairs({{0, "ENDBLK"}});
  std::string text = drawingOf({{"0"}, {"Walls", -3, 1}, {"Doors", 1, 4}}, entities, blocks);
  text.insert(text.rfind("0\nEOF"), pairs({{0, "SECTION"}, {2, "CARGO"}, {0, "BOX"}, {0, "ENDSEC"}}));
  return Drawing::parse(text, "house.dxf");
}

TEST(DrawingInfo, TellsFormatAndUnits) {
  const DrawingInfo info = infoOf(*drawingWithParts());
  EXPECT_EQ(info.version, "AC1027");
  EXPECT_EQ(info.format, "DXF 2013");
  EXPECT_EQ(info.units, "Unitless");
  EXPECT_EQ(info.lengths, "Decimal, 3 places");
  EXPECT_EQ(info.angles, "Decimal degrees, 1 place");
  EXPECT_FALSE(info.extents) << "the drawing stores none";
}

TEST(DrawingInfo, ReadsTheExtentsUnlessTheyAreThoseOfAnEmptyDrawing) {
  const auto of = [](const std::string& lower, const std::string& upper) {
    const std::string header = pairs({{0, "SECTION"},
                                      {2, "HEADER"},
                                      {9, "$INSUNITS"},
                                      {70, "4"},
                                      {9, "$EXTMIN"},
                                      {10, lower},
                                      {20, "200"},
                                      {30, "0"},
                                      {9, "$EXTMAX"},
                                      {10, upper},
                                      {20, "800"},
                                      {30, "0"},
                                      {0, "ENDSEC"},
                                      {0, "EOF"}});
    return infoOf(*Drawing::parse(header, "house.dxf"));
  };
  EXPECT_EQ(of("1", "7").extents->second, (std::array{7.0, 800.0, 0.0}));
  EXPECT_EQ(of("1", "7").units, "Millimeters");
  EXPECT_FALSE(of("1e20", "-1e20").extents);
}

TEST(DrawingInfo, CountsEntitiesOfLayersWithTheirStates) {
  const DrawingInfo info = infoOf(*drawingWithParts());
  ASSERT_EQ(info.layers.size(), 4U);
  EXPECT_EQ(info.layers[1].name, "Walls");
  EXPECT_EQ(info.layers[1].color, "Green");
  EXPECT_TRUE(info.layers[1].isOff && info.layers[1].isFrozen && !info.layers[1].isLocked);
  EXPECT_EQ(info.layers[1].entities.outside, 1U);
  EXPECT_EQ(info.layers[1].entities.inBlocks, 1U);
  EXPECT_TRUE(info.layers[2].isLocked);
  EXPECT_EQ(info.layers[3].name, "Forgotten");
  EXPECT_TRUE(info.layers[3].isOnlyNamed);
  EXPECT_EQ(info.entities.outside, 6U);
  EXPECT_EQ(info.entities.inBlocks, 2U);
}

TEST(DrawingInfo, CountsWhatIsInBlocksAndWhoRefersToThem) {
  const DrawingInfo info = infoOf(*drawingWithParts());
  ASSERT_EQ(info.blocks.size(), 3U);
  EXPECT_EQ(info.blocks[0].name, "Door");
  EXPECT_EQ(info.blocks[0].entities, 2U);
  EXPECT_EQ(info.blocks[0].references, 2U);
  EXPECT_TRUE(info.blocks[1].isAnonymous);
  EXPECT_EQ(info.blocks[1].references, 1U);
  EXPECT_TRUE(info.blocks[2].isExternal);
}

TEST(DrawingInfo, NamesWhatIsNotUnderstood) {
  const DrawingInfo info = infoOf(*drawingWithParts());
  EXPECT_THAT(info.unknownSections, ElementsAre("CARGO"));
  EXPECT_THAT(info.unknownTables, IsEmpty());
  std::vector<std::string> generic;
  for (const DrawingInfo::Class& of : info.classes) {
    if (of.isGeneric) generic.push_back(of.dxfType);
  }
  EXPECT_THAT(generic, ElementsAre("SPACESHIP"));
}

TEST(DrawingInfo, CountsTheEntitiesWithDataOfEachApplication) {
  const DrawingInfo info = infoOf(*drawingWithParts());
  ASSERT_EQ(info.applications.size(), 2U);
  EXPECT_EQ(info.applications[1].name, "PARTS");
  EXPECT_EQ(info.applications[1].entities, 1U) << "twice in one entity is one entity";
  ASSERT_EQ(info.layouts.size(), 1U);
  EXPECT_EQ(info.layouts[0].entities, 6U);
}

std::unique_ptr<Drawing> drawingWithHeader(const std::vector<Pair>& variables) {
  return Drawing::parse(
      pairs({{0, "SECTION"}, {2, "HEADER"}}) + pairs(variables) + pairs({{0, "ENDSEC"}, {0, "EOF"}}),
      "house.dxf");
}

DrawingInfo infoWithHeader(const std::vector<Pair>& variables) {
  return infoOf(*drawingWithHeader(variables));
}

TEST(DrawingInfo, TheUnitHasANameAsFarAsItsNumberHasOne) {
  const auto unitOf = [](const std::string& number) {
    return infoWithHeader({{9, "$INSUNITS"}, {70, number}}).units;
  };
  EXPECT_EQ(unitOf("-1"), "-1");
  EXPECT_EQ(unitOf("0"), "Unitless");
  EXPECT_EQ(unitOf("1"), "Inches");
  EXPECT_EQ(unitOf("24"), "US survey miles");
  EXPECT_EQ(unitOf("25"), "25");
  EXPECT_EQ(infoWithHeader({}).units, "Unitless");
}

TEST(DrawingInfo, NumbersWithoutAMeaningAreNoInsertionUnit) {
  const auto unitOf = [](const std::string& number) {
    return insertionUnit(*drawingWithHeader({{9, "$INSUNITS"}, {70, number}}));
  };
  EXPECT_EQ(unitOf("-1"), std::nullopt);
  EXPECT_EQ(unitOf("0"), std::nullopt);
  EXPECT_EQ(unitOf("1"), "Inches");
  EXPECT_EQ(unitOf("24"), "US survey miles");
  EXPECT_EQ(unitOf("25"), std::nullopt);
  EXPECT_EQ(insertionUnit(*drawingWithHeader({})), std::nullopt);
}

TEST(DrawingInfo, LengthsAndAnglesAreToldWithTheirPlaces) {
  const auto formatsOf = [](const std::string& format, const std::string& places) {
    const DrawingInfo info = infoWithHeader({{9, "$LUNITS"},
                                             {70, format},
                                             {9, "$LUPREC"},
                                             {70, places},
                                             {9, "$AUNITS"},
                                             {70, format},
                                             {9, "$AUPREC"},
                                             {70, places}});
    return info.lengths + " / " + info.angles;
  };
  EXPECT_EQ(formatsOf("1", "0"), "Scientific, 0 places / Degrees, minutes and seconds, 0 places");
  EXPECT_EQ(formatsOf("4", "1"), "Architectural, 1 place / Surveyor's units, 1 place");
  EXPECT_EQ(formatsOf("5", "2"), "Fractional, 2 places / 5, 2 places");
  EXPECT_EQ(formatsOf("6", "8"), "6, 8 places / 6, 8 places");
  const DrawingInfo info = infoWithHeader({});
  EXPECT_EQ(info.lengths, "Decimal");
  EXPECT_EQ(info.angles, "Decimal degrees");
}

TEST(DrawingInfo, TheFormatIsNamedWhereItIsKnown) {
  const auto formatOf = [](const std::string& version) {
    return infoWithHeader({{9, "$ACADVER"}, {1, version}}).format;
  };
  EXPECT_EQ(formatOf("AC1006"), "DXF R10");
  EXPECT_EQ(formatOf("AC1015"), "DXF 2000");
  EXPECT_EQ(formatOf("AC1032"), "DXF 2018");
  EXPECT_EQ(formatOf("AC1033"), "AC1033");
  EXPECT_EQ(infoWithHeader({}).format, "");
  EXPECT_EQ(infoWithHeader({{9, "$DWGCODEPAGE"}, {3, "ANSI_1252"}}).codePage, "ANSI_1252");
}

using Corners = std::pair<std::array<double, 3>, std::array<double, 3>>;

TEST(DrawingInfo, ExtentsAreWhatBothCornersSay) {
  const auto of = [](std::vector<Pair> lower, const std::vector<Pair>& upper) {
    lower.insert(lower.begin(), {9, "$EXTMIN"});
    lower.emplace_back(9, "$EXTMAX");
    lower.insert(lower.end(), upper.begin(), upper.end());
    return infoWithHeader(lower).extents;
  };
  EXPECT_EQ(of({{10, "5"}, {20, "-10"}, {30, "1"}}, {{10, "6"}, {20, "-5"}, {30, "2"}}),
            (Corners{{5, -10, 1}, {6, -5, 2}}));
  EXPECT_EQ(of({{10, "-10"}, {20, "5"}, {30, "1"}}, {{10, "-5"}, {20, "6"}, {30, "2"}}),
            (Corners{{-10, 5, 1}, {-5, 6, 2}}));
  EXPECT_EQ(of({{10, "3"}, {20, "4"}}, {{10, "3"}, {20, "4"}}), (Corners{{3, 4, 0}, {3, 4, 0}}))
      << "a drawing of one point, without heights";
  EXPECT_EQ(of({{10, "3"}}, {{10, "4"}, {20, "4"}}), std::nullopt);
  EXPECT_EQ(of({{10, "3"}, {20, "4"}}, {{20, "4"}}), std::nullopt);
  EXPECT_EQ(of({{10, "3"}, {20, "4"}}, {{10, "wide"}, {20, "4"}}), std::nullopt);
  EXPECT_EQ(infoWithHeader({{9, "$EXTMIN"}, {10, "1"}, {20, "2"}}).extents, std::nullopt);
  EXPECT_EQ(infoWithHeader({{9, "$EXTMAX"}, {10, "1"}, {20, "2"}}).extents, std::nullopt);
}

TEST(DrawingInfo, TheSpacesOfOldDrawingsAreNoBlocks) {
  std::string blocks;
  int handle = 0x60;
  for (const char* const name :
       {"*Model_Space", "Door", "$PAPER_SPACE", "*Paper_Space0", "$Model_Space", "Model_Space", "*U1"}) {
    blocks += pairs({{0, "BLOCK"}, {5, std::to_string(handle++)}, {8, "0"}, {2, name}, {70, "0"}})
              + pairs({{0, "ENDBLK"}});
  }
  std::vector<std::string> names;
  for (const DrawingInfo::Block& block :
       infoOf(*Drawing::parse(drawingOf({{"0"}}, "", blocks), "house.dxf")).blocks)
    names.push_back(block.name);
  EXPECT_THAT(names, ElementsAre("Door", "Model_Space", "*U1"));
}

TEST(DrawingInfo, ASheetThatNoLayoutNamesIsTold) {
  std::string sheet = line("30", "0");
  sheet.insert(sheet.find("8\n0"), "67\n1\n");
  const DrawingInfo info =
      infoOf(*Drawing::parse(drawingOf({{"0"}}, line("2F", "0") + sheet + line("31", "0")), "house.dxf"));
  ASSERT_EQ(info.layouts.size(), 2U);
  EXPECT_EQ(info.layouts[0].name, "(a sheet without a name)");
  EXPECT_EQ(info.layouts[0].entities, 1U);
  EXPECT_EQ(info.layouts[1].name, "Model");
  EXPECT_EQ(info.layouts[1].entities, 2U);
}

std::string lineWithDictionary(const std::string& handle, const std::string& dictionary) {
  std::string text = line(handle, "0");
  return text.insert(text.find("100\n"), pairs({{102, "{ACAD_XDICTIONARY"}, {360, dictionary}, {102, "}"}}));
}

TEST(DrawingInfo, CountsTheEntitiesWithADictionary) {
  std::string text =
      drawingOf({{"0"}}, line("2F", "0") + lineWithDictionary("30", "A0") + lineWithDictionary("31", "A1")
                             + lineWithDictionary("32", "A2"));
  text.insert(text.rfind("0\nEOF"), pairs({{0, "SECTION"},
                                           {2, "OBJECTS"},
                                           {0, "DICTIONARY"},
                                           {5, "A0"},
                                           {0, "DICTIONARY"},
                                           {5, "A1"},
                                           {0, "ENDSEC"}}));
  EXPECT_EQ(infoOf(*Drawing::parse(text, "house.dxf")).withExtensionDictionary, 2U)
      << "a handle of nothing is no dictionary";
}

TEST(DrawingInfo, ErasedEntitiesDoNotCount) {
  const auto drawing = drawingWithParts();
  drawing->setErased(database::resolve(drawing->entityByHandle(0x2F))->record, true);
  const DrawingInfo info = infoOf(*drawing);
  EXPECT_EQ(info.entities.outside, 5U);
  EXPECT_EQ(info.layers[1].entities.outside, 0U);
}

TEST(DrawingInfo, UnknownSectionsAndTablesAreToldOnceByName) {
  std::string text = drawingOf({{"0"}}, "");
  text.insert(text.rfind("0\nEOF"), pairs({{0, "SECTION"},
                                           {2, "THINGS"},
                                           {0, "ENDSEC"},
                                           {0, "SECTION"},
                                           {2, "CARGO"},
                                           {0, "TABLE"},
                                           {2, "SHELF"},
                                           {0, "TABLE"},
                                           {2, "DESK"},
                                           {0, "ENDSEC"},
                                           {0, "SECTION"},
                                           {2, "THINGS"},
                                           {0, "ENDSEC"}}));
  const DrawingInfo info = infoOf(*Drawing::parse(text, "house.dxf"));
  EXPECT_THAT(info.unknownSections, ElementsAre("CARGO", "THINGS"));
  EXPECT_THAT(info.unknownTables, ElementsAre("DESK", "SHELF"));
}

TEST(DrawingInfo, AReferenceToWhatIsMadeOfABlockRefersToTheBlock) {
  const std::string blocks =
      pairs({{0, "BLOCK"}, {5, "50"}, {8, "0"}, {2, "Door"}, {70, "0"}}) + pairs({{0, "ENDBLK"}})
      + pairs({{0, "BLOCK"}, {5, "51"}, {8, "0"}, {2, "*U7"}, {70, "1"}}) + pairs({{0, "ENDBLK"}});
  std::string text =
      drawingOf({{"0"}}, insert("2D", "*U7") + insert("2E", "Door") + insert("2F", "*U7"), blocks);
  text.insert(text.find("0\nENDSEC", text.find("ENDTAB")), pairs({{0, "TABLE"},
                                                                  {2, "BLOCK_RECORD"},
                                                                  {0, "BLOCK_RECORD"},
                                                                  {5, "A0"},
                                                                  {102, "{ACAD_XDICTIONARY"},
                                                                  {360, "D0"},
                                                                  {102, "}"},
                                                                  {2, "Door"},
                                                                  {0, "BLOCK_RECORD"},
                                                                  {5, "A1"},
                                                                  {2, "*U7"},
                                                                  {1001, "AcDbBlockRepBTag"},
                                                                  {1070, "1"},
                                                                  {1005, "A0"},
                                                                  {0, "ENDTAB"}}));
  text.insert(text.rfind("0\nEOF"), pairs({{0, "SECTION"},
                                           {2, "OBJECTS"},
                                           {0, "DICTIONARY"},
                                           {5, "D0"},
                                           {3, "ACAD_ENHANCEDBLOCK"},
                                           {360, "D1"},
                                           {0, "ACAD_EVALUATION_GRAPH"},
                                           {5, "D1"},
                                           {0, "ENDSEC"}}));
  const DrawingInfo info = infoOf(*Drawing::parse(text, "house.dxf"));
  ASSERT_EQ(info.blocks.size(), 2U);
  EXPECT_EQ(info.blocks[0].name, "Door");
  EXPECT_EQ(info.blocks[0].references, 3U);
  EXPECT_EQ(info.blocks[1].references, 0U);
}

TEST(DrawingInfo, ALayersColorIsToldByNameByIndexOrByItsParts) {
  std::string text = drawingOf({{"0", 1}, {"A", 7}, {"B", 8}, {"C", 255}, {"D", 5}}, "");
  text.insert(text.find("62\n5\n"), pairs({{420, std::to_string(0x010080)}}));
  std::vector<std::string> colors;
  for (const DrawingInfo::Layer& layer : infoOf(*Drawing::parse(text, "house.dxf")).layers)
    colors.push_back(layer.color);
  EXPECT_THAT(colors, ElementsAre("Red", "White", "8", "255", "1,0,128"));
}

}  // namespace
}  // namespace velt::tool
