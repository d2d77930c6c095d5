#include "tool/EntitySelection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tool/Drawings.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Property;
using testing::Throws;
using velt::database::Drawing;

std::unique_ptr<Drawing> sampleOf() {
  const std::string block = pairs({{0, "BLOCK"}, {5, "50"}, {8, "0"}, {2, "Door"}, {10, "0"}, {20, "0"}})
                            + line("51", "Doors") + pairs({{0, "ENDBLK"}, {5, "52"}, {8, "0"}});
  return Drawing::parse(
      drawingOf({{"0"}, {"Walls"}, {"Doors"}, {"Empty"}},
                line("2F", "Walls") + circle("30", "walls") + line("31", "Doors") + line("32", "Forgotten")
                    + pairs({{0, "3DFACE"}, {5, "33"}, {8, "Doors"}}),
                block),
      "house.dxf");
}

std::vector<std::string> handlesOf(Drawing& drawing, const SelectionRequest& request) {
  std::vector<std::string> handles;
  for (const VkDbObjectId id : select(drawing, request).ids)
    handles.push_back(handleText(id));
  return handles;
}

std::string failureOf(Drawing& drawing, const SelectionRequest& request) {
  try {
    select(drawing, request);
  } catch (const Failure& failure) {
    return failure.what();
  }
  return "";
}

TEST(EntitySelection, AllTakesEverythingOutsideBlockDefinitionsInFileOrder) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.all = true}), ElementsAre("2F", "30", "31", "32", "33"));
  EXPECT_EQ(select(*drawing, {.all = true}).leftOutInBlocks, 1U);
}

TEST(EntitySelection, BlockDefinitionsAreTakenInOnRequest) {
  const auto drawing = sampleOf();
  EXPECT_EQ(handlesOf(*drawing, {.all = true, .inBlocks = true}).size(), 6U);
  EXPECT_EQ(select(*drawing, {.all = true, .inBlocks = true}).leftOutInBlocks, 0U);
}

TEST(EntitySelection, AHandleReachesIntoABlockDefinition) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.handles = {"51"}}), ElementsAre("51"));
}

TEST(EntitySelection, HandlesAreHexadecimalInEitherCaseAndComeOutInFileOrder) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.handles = {"31", "2f"}}), ElementsAre("2F", "31"));
}

TEST(EntitySelection, LayersAreFoundWhateverTheirCase) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.layers = {"WALLS"}}), ElementsAre("2F", "30"));
}

TEST(EntitySelection, ALayerThatOnlyEntitiesNameCanBeSelected) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.layers = {"Forgotten"}}), ElementsAre("32"));
}

TEST(EntitySelection, ALayerWithoutEntitiesSelectsNothing) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.layers = {"Empty"}}), IsEmpty());
}

TEST(EntitySelection, TypesAreClassNamesOrNamesOfTheFile) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.types = {"circle"}}), ElementsAre("30"));
  EXPECT_THAT(handlesOf(*drawing, {.types = {"3dface"}}), ElementsAre("33"));
}

TEST(EntitySelection, AKnownClassThatTheDrawingLacksSelectsNothing) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.types = {"Hatch"}}), IsEmpty());
}

TEST(EntitySelection, FiltersOfOneKindAddUpAndDifferentKindsNarrow) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.layers = {"Walls", "Doors"}, .types = {"Line"}}),
              ElementsAre("2F", "31"));
  EXPECT_THAT(handlesOf(*drawing, {.handles = {"30", "31"}, .types = {"Circle"}}), ElementsAre("30"));
}

TEST(EntitySelection, AnUnknownHandleIsNamed) {
  const auto drawing = sampleOf();
  EXPECT_THAT(failureOf(*drawing, {.handles = {"2F", "abc"}}),
              HasSubstr("house.dxf: no entity has the handle ABC"));
}

TEST(EntitySelection, TheHandleOfSomethingElseNamesNoEntity) {
  const auto drawing = sampleOf();
  EXPECT_THAT(failureOf(*drawing, {.handles = {"10"}}), HasSubstr("no entity has the handle 10"));
}

TEST(EntitySelection, WhatIsNotAHandleIsSaidNotToBeOne) {
  const auto drawing = sampleOf();
  for (const char* const text : {"", "xyz", "2F ", "-1", "0", "11112222333344445"}) {
    EXPECT_THAT(failureOf(*drawing, {.handles = {text}}), HasSubstr("is not a handle")) << text;
  }
}

TEST(EntitySelection, AnUnknownLayerIsAnsweredWithTheLayersThereAre) {
  const auto drawing = sampleOf();
  EXPECT_EQ(failureOf(*drawing, {.layers = {"Wals"}}), "house.dxf: no layer \"Wals\"; did you mean Walls?");
  EXPECT_EQ(failureOf(*drawing, {.layers = {"Roof*"}}),
            "house.dxf: no layer \"Roof*\"; the drawing has: 0, Doors, Empty, Forgotten, Walls");
}

TEST(EntitySelection, AnUnknownTypeIsAnsweredWithTheTypesThereAre) {
  const auto drawing = sampleOf();
  EXPECT_THAT(failureOf(*drawing, {.types = {"Lien"}}),
              HasSubstr("no entities of type \"Lien\"; did you mean"));
  EXPECT_THAT(failureOf(*drawing, {.types = {"Roof"}}),
              HasSubstr("no entities of type \"Roof\"; the drawing has: 3DFACE, "));
}

TEST(EntitySelection, AnEntityIsDescribedByClassTypeAndLayer) {
  const auto drawing = sampleOf();
  const VkDbObjectId face = drawing->entityByHandle(0x33);
  EXPECT_EQ(className(drawing->entityByHandle(0x2F)), "Line");
  EXPECT_EQ(dxfName(face), "3DFACE");
  EXPECT_EQ(layerName(face), "Doors");
}

TEST(EntitySelection, NamesMayHaveWildcards) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.layers = {"?OORS", "For*"}}), ElementsAre("31", "32", "33"));
  EXPECT_THAT(handlesOf(*drawing, {.types = {"C*"}}), ElementsAre("30"));
}

TEST(EntitySelection, ABlockSelectsWhatStandsInItsDefinition) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.blocks = {"door"}}), ElementsAre("51"));
  EXPECT_EQ(failureOf(*drawing, {.blocks = {"Dor"}}), "house.dxf: no block \"Dor\"; did you mean Door?");
}

TEST(EntitySelection, ALayoutSelectsWhatStandsOnIt) {
  const auto drawing = sampleOf();
  EXPECT_EQ(handlesOf(*drawing, {.layouts = {"model"}}).size(), 5U);
  EXPECT_EQ(failureOf(*drawing, {.layouts = {"Sheet"}}),
            "house.dxf: no layout \"Sheet\"; the drawing has: Model");
}

TEST(EntitySelection, NotSelectsTheOthersOutsideOfBlocks) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.layers = {"Walls"}, .types = {"Line"}, .isInverted = true}),
              ElementsAre("30", "31", "32", "33"));
  EXPECT_THAT(handlesOf(*drawing, {.handles = {"2F", "51"}, .isInverted = true}),
              ElementsAre("30", "31", "32", "33"));
  EXPECT_EQ(select(*drawing, {.layers = {"Walls"}, .isInverted = true}).leftOutInBlocks, 1U);
}

TEST(EntitySelection, AnEntityKnowsTheBlockAndTheLayoutInWhichItStands) {
  const auto drawing = sampleOf();
  EXPECT_EQ(blockName(drawing->entityByHandle(0x51)), "Door");
  EXPECT_EQ(layoutName(drawing->entityByHandle(0x51)), "");
  EXPECT_EQ(blockName(drawing->entityByHandle(0x2F)), "");
  EXPECT_EQ(layoutName(drawing->entityByHandle(0x2F)), "Model");
}

TEST(EntitySelection, WhatIsLeftOutInBlocksIsToldInALine) {
  EXPECT_EQ(leftOutText({}), "");
  EXPECT_EQ(leftOutText({.ids = {}, .leftOutInBlocks = 1}),
            "1 entity inside block definitions left out (--in-blocks includes them)\n");
  EXPECT_EQ(leftOutText({.ids = {}, .leftOutInBlocks = 2, .isConditionOpen = true}),
            "2 entities inside block definitions not looked at (--in-blocks includes them)\n");
  EXPECT_EQ(entitiesText(2), "2 entities");
}

TEST(EntitySelection, AHandleThatSeveralEntitiesHaveSelectsWhatTheListShows) {
  const auto drawing = Drawing::parse(
      drawingOf({{"0"}}, line("2F", "0") + line("30", "0") + circle("2F", "0") + line("10", "0")),
      "house.dxf");
  EXPECT_THAT(handlesOf(*drawing, {.handles = {"2F"}}), ElementsAre("2F", "2F"));
  EXPECT_THAT(handlesOf(*drawing, {.handles = {"10"}}), ElementsAre("10")) << "a layer has it, too";
  const SelectedEntities all = select(*drawing, {.all = true});
  EXPECT_THAT(all.sharedHandles, ElementsAre(std::pair(0x2FU, 2U)));
  EXPECT_THAT(sharedHandleTexts(all), ElementsAre("2F"));
}

TEST(EntitySelection, SharedHandlesAreToldOnceAndNotAllByName) {
  std::string entities;
  for (int i = 0; i < 10; ++i)
    entities += line(std::to_string(20 + i), "0") + line(std::to_string(20 + i), "0");
  const auto drawing = Drawing::parse(drawingOf({{"0"}}, entities), "house.dxf");
  const std::string remark = remarkOnHandles(select(*drawing, {.all = true}));
  EXPECT_THAT(remark, HasSubstr("20 (2 entities), 21 (2 entities)"));
  EXPECT_THAT(remark, HasSubstr("27 (2 entities) and 2 more; --handle selects them all\n"));
  EXPECT_EQ(remarkOnHandles(select(*drawing, {.layers = {"0"}, .types = {"Line"}})), remark);
  SelectedEntities nine = select(*drawing, {.all = true});
  nine.sharedHandles.erase(0x29);
  EXPECT_THAT(remarkOnHandles(nine), HasSubstr(" and 1 more;"));
  const auto whole = sampleOf();
  EXPECT_EQ(remarkOnHandles(select(*whole, {.all = true})), "");
}

TEST(EntitySelection, AnEntityThatIsGoneCannotBeDescribed) {
  EXPECT_THAT([] { handleText(VkDbObjectId()); },
              testing::ThrowsMessage<Failure>("an entity of the selection no longer exists"));
}

TEST(EntitySelection, AnyNumberOtherThanZeroIsAHandle) {
  const auto drawing = sampleOf();
  const auto unknown = [](const std::string& handle) {
    return "house.dxf: no entity has the handle " + handle + " (\"veltprops list\" lists them all)";
  };
  EXPECT_EQ(failureOf(*drawing, {.handles = {"1"}}), unknown("1"));
  EXPECT_EQ(failureOf(*drawing, {.handles = {"ffffffffffffffff"}}), unknown("FFFFFFFFFFFFFFFF"));
  EXPECT_EQ(failureOf(*drawing, {.handles = {"2G"}}),
            "\"2G\" is not a handle: handles are hexadecimal numbers such as 2F");
  const auto first = Drawing::parse(drawingOf({{"0"}}, line("1", "0") + line("2", "0")), "house.dxf");
  EXPECT_THAT(handlesOf(*first, {.handles = {"1"}}), ElementsAre("1"));
}

TEST(EntitySelection, EachNameMustBeThere) {
  const auto drawing = sampleOf();
  EXPECT_EQ(failureOf(*drawing, {.layers = {"Walls", "Roof*", "Doors"}}),
            "house.dxf: no layer \"Roof*\"; the drawing has: 0, Doors, Empty, Forgotten, Walls");
  const std::string types = "; the drawing has: 3DFACE, 3DFace, CIRCLE, Circle, LINE, Line";
  EXPECT_EQ(failureOf(*drawing, {.types = {"Line", "Roof*"}}),
            "house.dxf: no entities of type \"Roof*\"" + types);
  EXPECT_EQ(failureOf(*drawing, {.types = {"Hatch", "Roof*"}}),
            "house.dxf: no entities of type \"Roof*\"" + types)
      << "also after one that is only known";
  EXPECT_EQ(failureOf(*drawing, {.blocks = {"Door", "Zz"}}),
            "house.dxf: no block \"Zz\"; the drawing has: Door");
}

TEST(EntitySelection, NamesAreListedWhileTheyAreFew) {
  std::vector<LayerOf> layers;
  std::string names;
  for (int i = 10; i < 50; ++i) {
    layers.push_back({"L" + std::to_string(i)});
    names += (names.empty() ? "L" : ", L") + std::to_string(i);
  }
  const auto failureWith = [&] {
    return failureOf(*Drawing::parse(drawingOf(layers, ""), "house.dxf"), {.layers = {"Roof*"}});
  };
  EXPECT_EQ(failureWith(), "house.dxf: no layer \"Roof*\"; the drawing has: " + names);
  layers.push_back({"L50"});
  EXPECT_EQ(failureWith(), "house.dxf: no layer \"Roof*\"");
  const auto empty = Drawing::parse(drawingOf({{"0"}}, line("2F", "0")), "house.dxf");
  EXPECT_EQ(failureOf(*empty, {.blocks = {"Roof*"}}), "house.dxf: no block \"Roof*\"; the drawing has none");
}

TEST(EntitySelection, WhatStandsInABlockStandsOnNoLayout) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.inBlocks = true, .layouts = {"*"}}),
              ElementsAre("2F", "30", "31", "32", "33"));
  EXPECT_THAT(handlesOf(*drawing, {.layouts = {"*"}, .isInverted = true}), IsEmpty());
}

TEST(EntitySelection, NotKeepsTheOrderOfTheOthers) {
  const auto drawing = sampleOf();
  EXPECT_THAT(handlesOf(*drawing, {.layers = {"Doors"}, .isInverted = true}), ElementsAre("2F", "30", "32"));
  EXPECT_THAT(handlesOf(*drawing, {.inBlocks = true, .handles = {"33", "30", "51"}, .isInverted = true}),
              ElementsAre("2F", "31", "32"));
  EXPECT_THAT(handlesOf(*drawing, {.where = "Layer = Doors", .isInverted = true}),
              ElementsAre("2F", "30", "32"));
}

TEST(EntitySelection, OnlyThoseInBlocksThatFitCountAsLeftOut) {
  const auto drawing = sampleOf();
  EXPECT_EQ(select(*drawing, {.layers = {"Doors"}}).leftOutInBlocks, 1U);
  EXPECT_EQ(select(*drawing, {.layers = {"Walls"}}).leftOutInBlocks, 0U);
  EXPECT_EQ(select(*drawing, {.layers = {"Doors"}, .isInverted = true}).leftOutInBlocks, 0U);
  EXPECT_FALSE(select(*drawing, {.layers = {"Doors"}}).isConditionOpen);
  EXPECT_TRUE(select(*drawing, {.where = "Layer = Doors"}).isConditionOpen);
}

TEST(EntitySelection, ErasedEntitiesAreNotSelected) {
  const auto drawing = sampleOf();
  drawing->setErased(database::resolve(drawing->entityByHandle(0x30))->record, true);
  EXPECT_THAT(handlesOf(*drawing, {.all = true}), ElementsAre("2F", "31", "32", "33"));
}

TEST(EntitySelection, SharedHandlesAreCountedHoweverManyHaveThem) {
  const auto drawing =
      Drawing::parse(drawingOf({{"0"}}, line("A1", "0") + line("2F", "0") + line("A1", "0") + line("30", "0")
                                            + circle("2F", "0") + line("A1", "0")),
                     "house.dxf");
  const SelectedEntities all = select(*drawing, {.all = true});
  EXPECT_THAT(all.sharedHandles, ElementsAre(std::pair(0x2FU, 2U), std::pair(0xA1U, 3U)));
  EXPECT_THAT(sharedHandleTexts(all), ElementsAre("2F", "A1"));
  EXPECT_EQ(remarkOnHandles(all),
            "\nThe drawing is damaged: several entities have the handle 2F (2 entities), A1 (3 entities); "
            "--handle selects them all\n");
}

TEST(EntitySelection, SharedHandlesThatAreAllNamedHaveNoMore) {
  SelectedEntities eight;
  for (std::uint64_t handle = 1; handle <= 8; ++handle)
    eight.sharedHandles[handle] = 2;
  EXPECT_THAT(remarkOnHandles(eight), HasSubstr(", 8 (2 entities); --handle selects them all\n"));
}

TEST(EntitySelection, OneIsAnEntityAndAnyOtherNumberAreEntities) {
  EXPECT_EQ(entitiesText(0), "0 entities");
  EXPECT_EQ(entitiesText(1), "1 entity");
  EXPECT_EQ(entitiesText(2), "2 entities");
}

}  // namespace
}  // namespace velt::tool
