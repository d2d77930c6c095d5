#include "embedded/automation/geometry/Spline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velt::automation {
namespace {

using std::numbers::pi;

Spline bezier(std::vector<Vector2> points, std::vector<double> weights = {}) {
  const int degree = static_cast<int>(points.size()) - 1;
  std::vector<double> knots(points.size(), 0.0);
  knots.insert(knots.end(), points.size(), 1.0);
  return Spline::make(degree, knots, std::move(points), std::move(weights)).value();
}

// A quarter of the unit circle about the origin, which weights make exact.
Spline quarterCircle() {
  return bezier({{1, 0}, {1, 1}, {0, 1}}, {1, std::numbers::sqrt2 / 2, 1});
}

TEST(Spline, ABezierCurveIsItsPolynomial) {
  const Spline curve = bezier({{0, 0}, {1, 2}, {3, -1}, {4, 4}});
  for (const double t : {0.0, 0.25, 0.5, 0.8, 1.0}) {
    const double s = 1 - t;
    const double x = 3 * s * s * t * 1 + 3 * s * t * t * 3 + t * t * t * 4;
    const double y = 3 * s * s * t * 2 + 3 * s * t * t * -1 + t * t * t * 4;
    EXPECT_NEAR(x, curve.at(t).x, 1e-14);
    EXPECT_NEAR(y, curve.at(t).y, 1e-14);
  }
}

TEST(Spline, WeightsMakeAnExactCircle) {
  const Spline curve = quarterCircle();
  for (double t = 0; t <= 1; t += 0.125)
    EXPECT_NEAR(1, length(curve.at(t)), 1e-14);
}

TEST(Spline, TheIntegralOfAQuarterCircleIsItsSector) {
  Effort effort(3);
  EXPECT_NEAR(pi / 4, quarterCircle().boundaryIntegral(effort).value(), 1e-12);
}

TEST(Spline, TheIntegralOfAPolynomialCurveIsExact) {
  Effort effort(3);
  // y = x^2 from (0, 0) to (1, 1): half the integral of x dy - y dx is 1/6.
  EXPECT_NEAR(1.0 / 6, bezier({{0, 0}, {0.5, 0}, {1, 1}}).boundaryIntegral(effort).value(), 1e-15);
}

TEST(Spline, AnEmptySpanAtTheEndAnswersWithTheOneBeforeIt) {
  const Spline curve = Spline::make(2, {0, 0, 0, 1, 1, 1, 1}, {{0, 0}, {1, 2}, {3, 0}, {9, 9}}, {}).value();
  EXPECT_NEAR(0, length(curve.at(1.0) - Vector2{3, 0}), 1e-14);
  EXPECT_NEAR(0, length(curve.at(0.5) - Vector2{1.25, 1}), 1e-14);
}

TEST(Spline, InnerKnotsAreRunThroughSpanBySpan) {
  const Spline curve =
      Spline::make(2, {0, 0, 0, 1, 1, 3, 3, 3}, {{0, 0}, {1, 2}, {2, 0}, {3, 5}, {4, 1}}, {}).value();
  ASSERT_EQ(2U, curve.spans().size());
  EXPECT_EQ((std::pair{1.0, 3.0}), curve.spans()[1]);
  EXPECT_EQ(0, length(curve.first() - Vector2{0, 0}));
  EXPECT_EQ(0, length(curve.last() - Vector2{4, 1}));
  double summed = 0;
  Vector2 last = curve.first();
  constexpr int steps = 300000;
  for (int step = 1; step <= steps; ++step) {
    const Vector2 next = curve.at(3.0 * step / steps);
    summed += cross(last, next) / 2;
    last = next;
  }
  Effort effort(5);
  EXPECT_NEAR(summed, curve.boundaryIntegral(effort).value(), 1e-9);
}

TEST(Spline, ACurveWhoseEndsAreNotClampedIsEvaluatedWithinItsParameters) {
  const Spline curve = Spline::make(2, {0, 1, 2, 3, 4, 5}, {{0, 0}, {2, 2}, {4, 0}}, {}).value();
  EXPECT_EQ(2, curve.firstParameter());
  EXPECT_EQ(3, curve.lastParameter());
  EXPECT_NEAR(1, curve.first().x, 1e-15);
  EXPECT_NEAR(3, curve.last().x, 1e-15);
}

TEST(Spline, TheIntegralIsNotComputedWithFewerStepsThanItTakes) {
  std::vector<double> knots(4, 0.0);
  std::vector<Vector2> points;
  std::vector<double> weights;
  for (int i = 0; i < 1000; ++i) {
    points.push_back({i % 7 * 1.0, i % 5 * 1.0});
    weights.push_back(i % 2 == 0 ? 2 : 1);
    knots.push_back(std::min(i + 1, 997));
  }
  const Spline curve = Spline::make(3, knots, points, weights).value();
  Effort enough(points.size());
  EXPECT_TRUE(curve.boundaryIntegral(enough).has_value());
  Effort tooLittle(0);
  EXPECT_THROW(static_cast<void>(curve.boundaryIntegral(tooLittle)), NotComputed);
}

TEST(Spline, TheParametersMayBeginAtZero) {
  const Spline curve = Spline::make(2, {5, 5, 5, 6, 8, 8, 8}, {{0, 0}, {1, 2}, {2, 0}, {3, 5}}, {}).value();
  const Spline moved = curve.fromZero();
  EXPECT_EQ(0, moved.firstParameter());
  EXPECT_EQ(3, moved.lastParameter());
  EXPECT_EQ(curve.at(6.5), moved.at(1.5));
}

TEST(Spline, ThePolygonIsTheWayFromControlPointToControlPoint) {
  EXPECT_DOUBLE_EQ(5 + 2, bezier({{0, 0}, {3, 4}, {3, 2}}).polygonLength());
  EXPECT_EQ(3U, quarterCircle().pointCount());
}

TEST(Spline, MovingItMovesEveryPoint) {
  const Spline moved = quarterCircle().movedBy({10, 20});
  EXPECT_NEAR(0, length(moved.first() - Vector2{11, 20}), 1e-14);
}

TEST(Spline, WhatMakesNoSenseIsRefused) {
  const std::vector<Vector2> points = {{0, 0}, {1, 1}, {2, 0}};
  EXPECT_TRUE(Spline::make(2, {0, 0, 0, 1, 1, 1}, points, {}));
  EXPECT_FALSE(Spline::make(0, {0, 0, 0, 1}, points, {})) << "degree 0";
  EXPECT_FALSE(Spline::make(16, {0, 0, 0, 1, 1, 1}, points, {})) << "degree too high";
  EXPECT_FALSE(Spline::make(2, {0, 0, 0, 1, 1}, points, {})) << "a knot too few";
  EXPECT_FALSE(Spline::make(2, {0, 0, 1, 0, 1, 1}, points, {})) << "knots descend";
  EXPECT_FALSE(Spline::make(2, {0, 0, 0, 0, 0, 0}, points, {})) << "no extent";
  EXPECT_FALSE(Spline::make(3, {0, 0, 0, 0, 1, 1, 1}, points, {})) << "points too few";
  EXPECT_FALSE(Spline::make(2, {0, 0, 0, 1, 1, 1}, points, {1, 1})) << "a weight too few";
  EXPECT_FALSE(Spline::make(2, {0, 0, 0, 1, 1, 1}, points, {1, 0, 1})) << "weight 0";
}

}  // namespace
}  // namespace velt::automation
