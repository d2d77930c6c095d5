#include "tool/DrawingInfo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

}  // namespace
}  // namespace velt::tool
