#include "view/HatchLines.h"

#include <gtest/gtest.h>

#include <numbers>

namespace velt::view {
namespace {

using Loops = std::vector<std::vector<Vector2>>;

const std::vector<Vector2> square = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};

std::vector<Outline> linesIn(const Loops& loops, const LineFamily& family) {
  std::vector<Outline> lines;
  EXPECT_TRUE(appendHatchLines(lines, family, loops, 0, 1000));
  return lines;
}

double totalLength(const std::vector<Outline>& lines) {
  double total = 0;
  for (const Outline& line : lines)
    total += length(line.points[1] - line.points[0]);
  return total;
}

TEST(HatchLines, EachLineIsCutToTheArea) {
  const std::vector<Outline> lines = linesIn({square}, {.base = {0, 1}, .offset = {0, 2}});
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_DOUBLE_EQ(totalLength(lines), 50);
}

TEST(HatchLines, HolesAreLeftOut) {
  const std::vector<Vector2> hole = {{4, 0.5}, {6, 0.5}, {6, 9.5}, {4, 9.5}};
  EXPECT_DOUBLE_EQ(totalLength(linesIn({square, hole}, {.base = {0, 1}, .offset = {0, 2}})), 40);
}

TEST(HatchLines, LinesThroughCornersAreNeitherLostNorDoubled) {
  const std::vector<Vector2> diamond = {{5, 0}, {10, 5}, {5, 10}, {0, 5}};
  EXPECT_DOUBLE_EQ(totalLength(linesIn({diamond}, {.offset = {0, 5}})), 10);
}

TEST(HatchLines, DashesBeginAtTheBaseAndShiftFromLineToLine) {
  const std::vector<Outline> lines = linesIn({square}, {.base = {0, 1}, .offset = {1, 5}, .dashes = {2, -2}});
  // On the first line 0-2, 4-6, 8-10; on the second one 1-3, 5-7, 9-10.
  EXPECT_NEAR(totalLength(lines), 11, 1e-9);
}

TEST(HatchLines, SlantedLinesAreAsFarApartAsTheirOffsetSays) {
  const LineFamily family{.angle = std::numbers::pi / 4, .offset = {-1, 1}};
  EXPECT_NEAR(spacingOf(family), std::numbers::sqrt2, 1e-12);
  EXPECT_NEAR(totalLength(linesIn({square}, family)), 100 / std::numbers::sqrt2, 8);
}

TEST(HatchLines, TooManyAreRefusedAndNoneIsAdded) {
  std::vector<Outline> lines;
  EXPECT_FALSE(appendHatchLines(lines, {.offset = {0, 1e-9}}, Loops{square}, 0, 1000));
  EXPECT_FALSE(appendHatchLines(lines, {.offset = {0, 1}, .dashes = {1e-9, -1e-9}}, Loops{square}, 0, 1000));
  EXPECT_TRUE(lines.empty());
}

TEST(HatchLines, FamiliesWithoutADistanceHaveNoLines) {
  EXPECT_TRUE(linesIn({square}, {.offset = {1, 0}}).empty());
}

}  // namespace
}  // namespace velt::view
