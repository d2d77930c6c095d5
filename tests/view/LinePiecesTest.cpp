#include "view/LinePieces.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/view/Scene.h"

namespace velt::view {
namespace {

using tests::spelled;

constexpr Box sight{{0, 0}, {10, 10}};

TEST(LinePieces, ALineInsideIsOnePiece) {
  const std::vector<Vector2> line = {{1, 1}, {5, 1}, {5, 4}};
  const auto pieces = piecesWithin(line, false, sight);
  ASSERT_EQ(pieces.size(), 1U);
  EXPECT_EQ(spelled(pieces[0].points), "1,1 5,1 5,4");
  EXPECT_EQ(pieces[0].start, 0);
}

TEST(LinePieces, ALineThatLeavesAndComesBackIsInPiecesThatKnowHowFarItHasGot) {
  const std::vector<Vector2> line = {{-5, 5}, {15, 5}, {15, 8}, {-5, 8}};
  const auto pieces = piecesWithin(line, false, sight);
  ASSERT_EQ(pieces.size(), 2U);
  EXPECT_EQ(spelled(pieces[0].points), "0,5 10,5");
  EXPECT_EQ(pieces[0].start, 5);
  EXPECT_EQ(spelled(pieces[1].points), "10,8 0,8");
  EXPECT_EQ(pieces[1].start, 20 + 3 + 5);
}

TEST(LinePieces, AClosedLineGoesBackToItsFirstPoint) {
  const std::vector<Vector2> line = {{5, 5}, {5, 20}, {8, 20}};
  EXPECT_EQ(piecesWithin(line, false, sight).size(), 1U);
  const auto pieces = piecesWithin(line, true, sight);
  ASSERT_EQ(pieces.size(), 2U);
  EXPECT_EQ(spelled(pieces[1].points), "6,10 5,5");
}

TEST(LinePieces, NothingIsLeftOfALineOutside) {
  const std::vector<Vector2> line = {{-9, 5}, {5, 22}, {std::numeric_limits<double>::infinity(), 5}};
  EXPECT_TRUE(piecesWithin(line, true, sight).empty());
}

// What is left of a line, counted by walking along it in small steps.
TEST(LinePieces, AreAsLongAsWhatLiesInside) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> place(-15, 25);
  for (int i = 0; i < 50; ++i) {
    std::vector<Vector2> line;
    for (int point = 0; point < 6; ++point)
      line.push_back({place(random), place(random)});
    double inside = 0;
    constexpr int steps = 2000;
    for (std::size_t point = 0; point < line.size(); ++point) {
      const Vector2 along = line[(point + 1) % line.size()] - line[point];
      for (int step = 0; step < steps; ++step) {
        const Vector2 at = line[point] + ((step + 0.5) / steps) * along;
        if (sight.meets({at, at})) inside += length(along) / steps;
      }
    }
    double left = 0;
    for (const LinePiece& piece : piecesWithin(line, true, sight)) {
      for (std::size_t point = 1; point < piece.points.size(); ++point)
        left += length(piece.points[point] - piece.points[point - 1]);
    }
    EXPECT_NEAR(left, inside, 0.4);
  }
}

}  // namespace
}  // namespace velt::view
