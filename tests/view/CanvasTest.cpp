#include "view/Canvas.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace velt::view {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Canvas, PointsThatAreNotNumbersPartALine) {
  Canvas canvas({});
  const std::array<Vector2, 5> points = {Vector2{0, 0}, {1, 0}, {notANumber, 0}, {3, 0}, {4, 0}};
  canvas.path({}, points, true);
  const Picture picture = canvas.take();
  ASSERT_EQ(picture.parts.size(), 2U);
  EXPECT_FALSE(picture.parts[0].isClosed);
  EXPECT_EQ(picture.points.size(), 4U);
}

TEST(Canvas, WhatHasNoPointsIsNotThere) {
  Canvas canvas({});
  const std::array<Vector2, 1> lost = {Vector2{1e300, 0}};
  canvas.path({}, lost);
  const Outline flat{{{0, 0}, {1, 1}}, true};
  canvas.fill({}, std::span(&flat, 1));
  canvas.text({}, {.wording = L"a", .origin = {notANumber, 0}, .right = {1, 0}, .up = {0, 1}, .length = 1});
  const Picture picture = canvas.take();
  EXPECT_TRUE(picture.isEmpty());
  EXPECT_TRUE(picture.points.empty());
}

TEST(Canvas, WhatLiesOutsideOfTheWindowIsLeftOut) {
  Canvas canvas({.window = Box{{0, 0}, {10, 10}}});
  const std::array<Vector2, 2> outside = {Vector2{20, 0}, {30, 0}};
  const std::array<Vector2, 2> across = {Vector2{-5, 5}, {15, 5}};
  canvas.path({}, outside);
  canvas.path({}, across);
  const Picture picture = canvas.take();
  EXPECT_EQ(picture.primitives.size(), 1U);
  EXPECT_EQ(picture.points.size(), 2U);
}

TEST(Canvas, AClipCutsTheBoxAndWhatLiesOutside) {
  Canvas canvas({});
  const std::uint32_t outer = canvas.addClip({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, none);
  const std::uint32_t clip = canvas.addClip({{5, 5}, {20, 5}, {20, 20}, {5, 20}}, outer);
  const std::array<Vector2, 2> line = {Vector2{0, 6}, {30, 6}};
  const std::array<Vector2, 2> below = {Vector2{0, 2}, {30, 2}};
  canvas.path({.clip = clip}, line);
  canvas.path({.clip = clip}, below);
  const Picture picture = canvas.take();
  ASSERT_EQ(picture.primitives.size(), 1U);
  EXPECT_EQ(picture.primitives[0].box.low.x, 5);
  EXPECT_EQ(picture.primitives[0].box.high.x, 10);
}

TEST(Canvas, EndlessLinesSayNothingOfWhereTheDrawingEnds) {
  Canvas canvas({});
  const std::array<Vector2, 2> line = {Vector2{0, 0}, {1000, 0}};
  canvas.path({.isEndless = true}, line);
  EXPECT_LT(canvas.take().extents.high.x, 0);
}

TEST(Canvas, TakesNothingMoreOnceItsLimitIsReached) {
  Canvas canvas({.limits = {.points = 3}});
  const std::array<Vector2, 2> line = {Vector2{0, 0}, {1, 0}};
  for (int i = 0; i < 5; ++i)
    canvas.path({}, line);
  const Picture picture = canvas.take();
  EXPECT_TRUE(picture.isCutShort);
  EXPECT_EQ(picture.primitives.size(), 2U);
}

TEST(Canvas, TheSameDashesAreKeptOnce) {
  Canvas canvas({});
  EXPECT_EQ(canvas.addDashes({1, 2}), canvas.addDashes({1, 2}));
  EXPECT_NE(canvas.addDashes({1, 2}), canvas.addDashes({2, 1}));
}

}  // namespace
}  // namespace velt::view
