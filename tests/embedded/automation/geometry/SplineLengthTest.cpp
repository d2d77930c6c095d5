#include "embedded/automation/geometry/SplineLength.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace velt::automation {
namespace {

using std::numbers::pi;

std::vector<double> plainKnots(std::size_t points, double first = 0) {
  std::vector<double> knots(4, first);
  for (std::size_t i = 1; i + 3 < points; ++i)
    knots.push_back(first + static_cast<double>(i));
  knots.insert(knots.end(), 4, first + static_cast<double>(points - 3));
  return knots;
}

SpaceSpline flatCurve(const std::vector<double>& knots, const std::vector<Vector2>& points,
                      const std::vector<double>& weights = {}) {
  return {Spline::make(3, knots, points, weights).value(),
          Spline::make(3, knots, std::vector<Vector2>(points.size()), weights).value()};
}

double lengthOf(const SpaceSpline& curve) {
  Effort effort(2 * curve.flat.pointCount());
  return splineLength(curve, effort);
}

// A gentle wave that begins there.
std::vector<Vector2> wave(std::size_t count, Vector2 first = {}) {
  std::vector<Vector2> points;
  for (std::size_t i = 0; i < count; ++i) {
    const auto at = static_cast<double>(i);
    points.push_back(first + Vector2{at, std::sin(at * 0.3)});
  }
  return points;
}

// Points that follow no order; the same ones every time.
std::vector<Vector2> scattered(std::size_t count) {
  std::uint32_t state = 1;
  const auto next = [&] {
    return static_cast<double>((state = state * 1664525 + 1013904223) >> 8) / (1 << 24);
  };
  std::vector<Vector2> points(count);
  for (Vector2& point : points)
    point = {100 * next(), 100 * next()};
  return points;
}

TEST(SplineLength, OfAStraightCurveIsItsChord) {
  const SpaceSpline line = flatCurve(plainKnots(4), {{0, 0}, {1, 1}, {2, 2}, {3, 3}});
  EXPECT_NEAR(3 * std::numbers::sqrt2, lengthOf(line), 1e-14);
}

TEST(SplineLength, CountsTheHeight) {
  const std::vector<double> knots = plainKnots(4);
  const SpaceSpline line = {Spline::make(3, knots, {{0, 0}, {1, 0}, {2, 0}, {3, 0}}, {}).value(),
                            Spline::make(3, knots, {{0, 0}, {4.0 / 3, 0}, {8.0 / 3, 0}, {4, 0}}, {}).value()};
  EXPECT_NEAR(5, lengthOf(line), 1e-13);
}

TEST(SplineLength, OfAnExactQuarterCircleIsAnArc) {
  const std::vector<double> knots = {0, 0, 0, 1, 1, 1};
  const std::vector<double> weights = {1, std::numbers::sqrt2 / 2, 1};
  const SpaceSpline arc = {Spline::make(2, knots, {{1, 0}, {1, 1}, {0, 1}}, weights).value(),
                           Spline::make(2, knots, std::vector<Vector2>(3), weights).value()};
  EXPECT_NEAR(pi / 2, lengthOf(arc), 1e-13);
}

// Sites are drawn where they lie: hundreds of kilometers from the origin. The rounding of such points hid what the
// halves were compared for, and they were halved to the end, a million times for each piece.
TEST(SplineLength, FarFromTheOriginIsTheSame) {
  const double near = lengthOf(flatCurve(plainKnots(200), wave(200)));
  for (const double away : {1e4, 1e5, 1e6}) {
    const double far = lengthOf(flatCurve(plainKnots(200), wave(200, {away, -away})));
    EXPECT_NEAR(near, far, 1e-12 * away) << away;
  }
}

TEST(SplineLength, WithKnotsFarFromZeroIsTheSame) {
  const double near = lengthOf(flatCurve(plainKnots(200), scattered(200)));
  for (const double first : {1e3, 1e5, 1e8})
    EXPECT_NEAR(near, lengthOf(flatCurve(plainKnots(200, first), scattered(200))), 1e-9 * near) << first;
}

TEST(SplineLength, TakesAsManyStepsForEachPointHoweverManyThereAre) {
  const auto stepsFor = [](std::size_t points) {
    Effort effort(2 * points);
    const std::size_t before = effort.left();
    static_cast<void>(splineLength(flatCurve(plainKnots(points), wave(points)), effort));
    return static_cast<double>(before - effort.left()) / static_cast<double>(points);
  };
  const double forFew = stepsFor(100);
  EXPECT_NEAR(forFew, stepsFor(10'000), 0.2 * forFew);
}

TEST(SplineLength, IsNotComputedWithFewerStepsThanItTakes) {
  const SpaceSpline curve = flatCurve(plainKnots(1000), scattered(1000));
  Effort enough(2000);
  EXPECT_NO_THROW(static_cast<void>(splineLength(curve, enough)));
  Effort tooLittle(0);
  EXPECT_THROW(static_cast<void>(splineLength(curve, tooLittle)), NotComputed);
}

}  // namespace
}  // namespace velt::automation
