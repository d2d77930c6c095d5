#include "view/SpatialIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/view/Scene.h"

namespace velt::view {
namespace {

using namespace velt::tests;

std::vector<std::string> typesOf(const Scene& scene, const std::vector<std::uint32_t>& entities) {
  std::vector<std::string> types;
  for (const std::uint32_t entity : entities)
    types.emplace_back(scene.drawing().document().type(entity));
  return types;
}

using Types = std::vector<std::string>;

const std::string solid = entityOf(
    "SOLID", {{10, "0"}, {20, "0"}, {11, "10"}, {21, "0"}, {12, "0"}, {22, "10"}, {13, "10"}, {23, "10"}});

TEST(SpatialIndex, AClickFindsWhatLiesWithinReachTheTopmostFirst) {
  const Scene scene(solid + lineFromTo("-5", "5", "20", "5"));
  const SpatialIndex index(scene.picture());
  EXPECT_EQ(typesOf(scene, index.at({5, 5.4}, 0.5)), (Types{"LINE", "SOLID"}));
  EXPECT_EQ(typesOf(scene, index.at({5, 6}, 0.5)), (Types{"SOLID"}));
  EXPECT_EQ(typesOf(scene, index.at({15, 5.6}, 0.5)), (Types{}));
  EXPECT_EQ(typesOf(scene, index.at({20.4, 5}, 0.5)), (Types{"LINE"}));
}

TEST(SpatialIndex, ACircleIsHitOnItsLineAlone) {
  const Scene scene(circle("A1", "0"), "", {{"0"}}, {.scale = 100});
  const SpatialIndex index(scene.picture());
  EXPECT_EQ(index.at({2.5, 0.1}, 0.05).size(), 1U);
  EXPECT_TRUE(index.at({0, 0}, 0.05).empty());
}

TEST(SpatialIndex, ABroadLineIsHitOverItsWidth) {
  const Scene scene(entityOf("LWPOLYLINE", {{43, "4"}, {10, "0"}, {20, "0"}, {10, "10"}, {20, "0"}}));
  const SpatialIndex index(scene.picture());
  EXPECT_EQ(index.at({5, 1.9}, 0.01).size(), 1U);
  EXPECT_TRUE(index.at({5, 2.1}, 0.01).empty());
}

TEST(SpatialIndex, AWindowFindsWhatLiesInsideAndACrossingAlsoWhatReachesIn) {
  const Scene scene(solid + lineFromTo("1", "1", "2", "2") + lineFromTo("8", "8", "50", "8")
                    + lineFromTo("-10", "40", "40", "-10"));
  const SpatialIndex index(scene.picture());
  const Box box{{-1, -1}, {11, 11}};
  EXPECT_EQ(typesOf(scene, index.within(box)), (Types{"SOLID", "LINE"}));
  EXPECT_EQ(index.crossing(box).size(), 3U) << "the last line passes by the corner";
}

TEST(SpatialIndex, AWindowDoesNotFindAReferenceOfWhichAPartLiesOutside) {
  const Scene scene(insertOf("B"),
                    blockOf("B", lineFromTo("0", "0", "1", "0") + lineFromTo("100", "0", "101", "0")));
  const SpatialIndex index(scene.picture());
  EXPECT_TRUE(index.within({{-1, -1}, {5, 5}}).empty());
  EXPECT_EQ(index.crossing({{-1, -1}, {5, 5}}).size(), 1U);
  EXPECT_EQ(index.within({{-1, -1}, {105, 5}}).size(), 1U);
}

TEST(SpatialIndex, ATextIsHitWhereItsLettersAre) {
  const Scene scene(entityOf("TEXT", {{10, "0"}, {20, "0"}, {40, "2"}, {1, "Wall"}}));
  const SpatialIndex index(scene.picture());
  EXPECT_EQ(index.at({1, 1}, 0).size(), 1U);
  EXPECT_TRUE(index.at({1, 5}, 0).empty());
}

TEST(SpatialIndex, FindsWhatALookAtAllOfThemFinds) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> place(0, 100);
  Picture picture;
  for (std::uint32_t i = 0; i < 500; ++i) {
    const Vector2 from{place(random), place(random)};
    const Vector2 to = from + Vector2{place(random) / 10, place(random) / 10};
    Primitive primitive{.entity = i, .first = i, .count = 1};
    primitive.box.include(from);
    primitive.box.include(to);
    picture.parts.push_back({static_cast<std::uint32_t>(picture.points.size()), 2, false});
    picture.points.insert(picture.points.end(), {from, to});
    picture.primitives.push_back(primitive);
  }
  const SpatialIndex index(picture);
  for (int i = 0; i < 50; ++i) {
    const Vector2 corner{place(random), place(random)};
    const Box box{corner, corner + Vector2{15, 15}};
    std::vector<std::uint32_t> seen;
    std::vector<std::uint32_t> within;
    for (const Primitive& primitive : picture.primitives) {
      if (primitive.box.meets(box)) seen.push_back(primitive.entity);
      const Box& own = primitive.box;
      if (own.low.x >= box.low.x && own.low.y >= box.low.y && own.high.x <= box.high.x
          && own.high.y <= box.high.y)
        within.push_back(primitive.entity);
    }
    EXPECT_EQ(index.seenIn(box), seen);
    EXPECT_EQ(index.within(box), within);
  }
}

TEST(SpatialIndex, NothingIsFoundInAPictureOfNothing) {
  const Picture picture;
  const SpatialIndex index(picture);
  EXPECT_TRUE(index.at({0, 0}, 1e9).empty());
  EXPECT_TRUE(index.crossing({{-1e9, -1e9}, {1e9, 1e9}}).empty());
}

}  // namespace
}  // namespace velt::view
