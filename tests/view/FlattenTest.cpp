#include "view/Flatten.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace velt::view {
namespace {

using automation::EllipticalArc;

double farthestFromCircle(const std::vector<Vector2>& points, double radius) {
  double farthest = 0;
  for (std::size_t i = 1; i < points.size(); ++i)
    farthest = std::max(farthest, radius - length(0.5 * (points[i - 1] + points[i])));
  return farthest;
}

TEST(Flatten, AnArcStaysWithinTheTolerance) {
  for (const double tolerance : {1.0, 0.1, 0.001}) {
    std::vector<Vector2> points = {{100, 0}};
    appendArc(points, {{0, 0}, {100, 0}, {0, 100}, 0, 2 * std::numbers::pi}, {tolerance});
    EXPECT_LE(farthestFromCircle(points, 100), tolerance * 1.001);
    EXPECT_LT(points.size(), 400U / std::sqrt(tolerance));
    EXPECT_NEAR(length(points.back() - Vector2{100, 0}), 0, 1e-9);
  }
}

TEST(Flatten, AnArcThatIsNotFiniteHasNoPoints) {
  std::vector<Vector2> points;
  appendArc(points, {{0, 0}, {std::numeric_limits<double>::quiet_NaN(), 0}, {0, 1}, 0, 1}, {0.1});
  appendArc(points, {{0, 0}, {1, 0}, {0, 1}, 0, std::numeric_limits<double>::infinity()}, {0.1});
  EXPECT_TRUE(points.empty());
}

TEST(Flatten, ABulgeOfOneIsAHalfCircleToTheRightOfItsChord) {
  std::vector<Vector2> points = {{0, 0}};
  appendBulge(points, {0, 0}, {2, 0}, 1, {0.001});
  EXPECT_EQ(points.back(), (Vector2{2, 0}));
  double lowest = 0;
  for (const Vector2& point : points)
    lowest = std::min(lowest, point.y);
  EXPECT_NEAR(lowest, -1, 0.001);
}

TEST(Flatten, AStraightSegmentIsItsEnd) {
  std::vector<Vector2> points;
  appendBulge(points, {0, 0}, {2, 0}, 0, {0.001});
  appendBulge(points, {2, 0}, {2, 0}, 1, {0.001});
  EXPECT_EQ(points.size(), 2U);
}

TEST(Flatten, ASplineEndsWhereItsControlPointsEnd) {
  const auto spline =
      automation::Spline::make(3, {0, 0, 0, 0, 1, 1, 1, 1}, {{0, 0}, {0, 10}, {10, 10}, {10, 0}}, {});
  ASSERT_TRUE(spline);
  std::vector<Vector2> points;
  appendSpline(points, *spline, {0.01});
  EXPECT_EQ(points.front(), (Vector2{0, 0}));
  EXPECT_NEAR(length(points.back() - Vector2{10, 0}), 0, 1e-9);
  double highest = 0;
  for (const Vector2& point : points)
    highest = std::max(highest, point.y);
  EXPECT_NEAR(highest, 7.5, 0.01);
}

TEST(Flatten, ACurveGoesThroughItsPointsAndBeginsAsTold) {
  const std::vector<Vector2> through = {{0, 0}, {10, 5}, {20, 0}};
  std::vector<Vector2> points;
  appendCurveThrough(points, through, Vector2{0, 1}, std::nullopt, {0.001});
  for (const Vector2& wanted : through) {
    EXPECT_TRUE(std::any_of(points.begin(), points.end(),
                            [&](Vector2 point) { return length(point - wanted) < 1e-9; }));
  }
  EXPECT_GT(points[1].y, 5 * points[1].x);
}

TEST(Flatten, ACurveThroughPointsOnALineIsThatLine) {
  std::vector<Vector2> points;
  const std::vector<Vector2> through = {{0, 0}, {1, 1}, {1, 1}, {5, 5}, {6, 6}};
  appendCurveThrough(points, through, std::nullopt, std::nullopt, {0.001});
  for (const Vector2& point : points)
    EXPECT_NEAR(point.x, point.y, 1e-9);
}

}  // namespace
}  // namespace velt::view
