#include "view/Appearance.h"

#include <gtest/gtest.h>

#include "tests/view/Scene.h"
#include "view/Colors.h"

namespace velt::view {
namespace {

using namespace velt::tests;

TEST(Appearance, AnEntityByLayerHasTheColorOfItsLayer) {
  const Scene scene(lineFromTo("0", "0", "1", "0", "Red"), "", {{"Red", 1}});
  EXPECT_EQ(scene[0].ink, inkOfIndex(1));
}

TEST(Appearance, OwnColorsAndTrueColorsCountBeforeTheLayer) {
  const Scene scene(lineFromTo("0", "0", "1", "0", "Red", {{62, "3"}})
                        + lineFromTo("0", "0", "1", "0", "Red", {{62, "3"}, {420, "1193046"}}),
                    "", {{"Red", 1}});
  EXPECT_EQ(scene[0].ink, inkOfIndex(3));
  EXPECT_EQ(scene[1].ink, inkOfRgb(0x123456));
}

TEST(Appearance, ByBlockIsTheColorOfTheReferenceThroughAllLevels) {
  const std::string inner = blockOf("Inner", lineFromTo("0", "0", "1", "0", "Red", {{62, "0"}}));
  const std::string outer = blockOf("Outer", entityOf("INSERT", {{2, "Inner"}}, "Red", {{62, "0"}}));
  const Scene scene(entityOf("INSERT", {{2, "Outer"}}, "0", {{62, "5"}}), inner + outer, {{"0"}, {"Red", 1}});
  ASSERT_EQ(scene.size(), 1U);
  EXPECT_EQ(scene[0].ink, inkOfIndex(5));
}

TEST(Appearance, LayerZeroOfABlockIsTheLayerOfTheReference) {
  const Scene scene(insertOf("B", {}, "Red"), blockOf("B", lineFromTo("0", "0", "1", "0")),
                    {{"0", 2}, {"Red", 1}});
  EXPECT_EQ(scene[0].ink, inkOfIndex(1));
}

TEST(Appearance, LayersThatAreOffOrFrozenAreNotSeen) {
  const std::vector<LayerOf> layers = {{"0"}, {"Off", -1}, {"Frozen", 1, 1}, {"Locked", 1, 4}};
  const Scene scene(lineFromTo("0", "0", "1", "0", "Off") + lineFromTo("0", "0", "2", "0", "Frozen")
                        + lineFromTo("0", "0", "3", "0", "Locked"),
                    "", layers);
  ASSERT_EQ(scene.size(), 1U);
  EXPECT_EQ(scene.points(0)[1].x, 3);
}

TEST(Appearance, AReferenceOnAFrozenLayerHidesAllAndOneThatIsOffOnlyWhatIsOnItsLayer) {
  const std::vector<LayerOf> layers = {{"0"}, {"Off", -1}, {"Frozen", 1, 1}, {"Red", 1}};
  const std::string block =
      blockOf("B", lineFromTo("0", "0", "1", "0") + lineFromTo("0", "0", "2", "0", "Red"));
  EXPECT_EQ(Scene(insertOf("B", {}, "Frozen"), block, layers).size(), 0U);
  const Scene off(insertOf("B", {}, "Off"), block, layers);
  ASSERT_EQ(off.size(), 1U);
  EXPECT_EQ(off.points(0)[1].x, 2);
}

TEST(Appearance, InvisibleEntitiesAreNotSeen) {
  EXPECT_EQ(Scene(lineFromTo("0", "0", "1", "0", "0", {{60, "1"}})).size(), 0U);
}

TEST(Appearance, LineWeightsAreMillimetres) {
  const Scene scene(lineFromTo("0", "0", "1", "0", "0", {{370, "50"}}) + lineFromTo("0", "0", "1", "0"));
  EXPECT_FLOAT_EQ(scene[0].lineweight, 0.5F);
  EXPECT_FLOAT_EQ(scene[1].lineweight, 0.25F);
}

std::string dashedDrawing(const std::string& entities, const std::string& elements) {
  std::string text = drawingOf({{"0"}}, entities);
  const std::string linetypes = pairs({{0, "TABLE"}, {2, "LTYPE"}, {0, "LTYPE"}, {2, "DASHED"}, {70, "0"}})
                                + elements + pairs({{0, "ENDTAB"}});
  const std::string place = pairs({{2, "TABLES"}});
  text.insert(text.find(place) + place.size(), linetypes);
  const std::string header = pairs({{2, "HEADER"}});
  text.insert(text.find(header) + header.size(), pairs({{9, "$LTSCALE"}, {40, "10"}}));
  return text;
}

std::vector<double> dashesOf(const std::string& elements, const std::string& scale = "1", double pixels = 1) {
  const std::string entities = lineFromTo("0", "0", "100", "0", "0", {{6, "Dashed"}, {48, scale}});
  const Scene scene(database::Drawing::parse(dashedDrawing(entities, elements), "scene"), {.scale = pixels});
  const std::uint32_t dashes = scene[0].dashes;
  return dashes == none ? std::vector<double>() : scene.picture().dashes[dashes];
}

TEST(Appearance, DashesAreScaledByTheDrawingAndTheEntity) {
  const std::string elements = pairs({{49, "2"}, {49, "-1"}});
  EXPECT_EQ(dashesOf(elements), (std::vector<double>{20, 10}));
  EXPECT_EQ(dashesOf(elements, "0.5"), (std::vector<double>{10, 5}));
}

TEST(Appearance, DotsHaveNoLengthAndGapsAfterEachOtherAreOne) {
  EXPECT_EQ(dashesOf(pairs({{49, "1"}, {49, "-0.5"}, {49, "0"}, {49, "-0.5"}, {49, "-0.25"}})),
            (std::vector<double>{10, 5, 0, 7.5}));
}

TEST(Appearance, PatternsTooSmallToBeSeenAreContinuous) {
  const std::string elements = pairs({{49, "2"}, {49, "-1"}});
  EXPECT_TRUE(dashesOf(elements, "1", 0.01).empty());
  EXPECT_TRUE(dashesOf(pairs({{49, "2"}, {49, "0"}})).empty());
}

}  // namespace
}  // namespace velt::view
