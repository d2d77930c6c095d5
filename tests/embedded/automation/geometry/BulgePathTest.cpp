#include "embedded/automation/geometry/BulgePath.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "embedded/automation/geometry/EllipticalArc.h"

namespace velt::automation {
namespace {

using std::numbers::pi;
using Path = std::vector<BulgeVertex>;

const Path squarePath = {{{0, 0}}, {{2, 0}}, {{2, 2}}, {{0, 2}}};

TEST(BulgePath, ASquareHasItsSidesAndItsArea) {
  EXPECT_DOUBLE_EQ(8, pathLength(squarePath, true));
  EXPECT_DOUBLE_EQ(6, pathLength(squarePath, false));
  EXPECT_DOUBLE_EQ(4, signedPathArea(squarePath, true));
  EXPECT_DOUBLE_EQ(4, signedPathArea(squarePath, false));
}

TEST(BulgePath, ClockwiseAreasAreNegative) {
  const Path clockwise(squarePath.rbegin(), squarePath.rend());
  EXPECT_DOUBLE_EQ(-4, signedPathArea(clockwise, true));
}

TEST(BulgePath, TwoHalfCirclesAreACircle) {
  const Path circle = {{{-3, 0}, 1}, {{3, 0}, 1}};
  EXPECT_NEAR(6 * pi, pathLength(circle, true), 1e-12);
  EXPECT_NEAR(9 * pi, signedPathArea(circle, true), 1e-12);
  EXPECT_NEAR(9 * pi / 2, signedPathArea(circle, false), 1e-12) << "the chord closes the open one";
}

TEST(BulgePath, TheBulgeOfTheLastVertexOfAnOpenPathCountsForNothing) {
  Path path = squarePath;
  path.back().bulge = 0.7;
  EXPECT_DOUBLE_EQ(6, pathLength(path, false));
  EXPECT_DOUBLE_EQ(4, signedPathArea(path, false));
  EXPECT_GT(pathLength(path, true), 8);
}

TEST(BulgePath, FarFromTheOriginNothingIsLost) {
  Path far = squarePath;
  for (BulgeVertex& vertex : far)
    vertex.point = vertex.point + Vector2{4e6, 5e6};
  EXPECT_DOUBLE_EQ(4, signedPathArea(far, true));
}

TEST(BulgePath, NothingAndASinglePointHaveNoExtent) {
  EXPECT_EQ(0, pathLength({}, true));
  EXPECT_EQ(0, signedPathArea({}, true));
  EXPECT_EQ(0, signedPathArea(Path{{{1, 1}, 1}}, true));
}

TEST(BulgePath, NearlyStraightArcsAreMeasuredAsExactlyAsOthers) {
  // Where the two ways to compute meet, they agree.
  for (const double bulge : {0.99e-3, 1.01e-3}) {
    const Path path = {{{0, 0}, bulge}, {{7, 0}}};
    const EllipticalArc arc = EllipticalArc::ofBulge({0, 0}, {7, 0}, bulge);
    const double radius = length(arc.major);
    const long double angle = 4 * std::atan(static_cast<long double>(bulge));
    const long double wide = radius;
    const long double expected = wide * wide / 2 * (angle - std::sin(angle));
    EXPECT_NEAR(1, signedPathArea(path, true) / static_cast<double>(expected), 1e-10);
  }
}

RC_GTEST_PROP(BulgePath, MeasuresWhatManyShortChordsMeasure, ()) {
  Path path;
  const int count = *rc::gen::inRange(2, 7);
  for (int i = 0; i < count; ++i) {
    const auto number = [] { return *rc::gen::inRange(-1000, 1000) / 100.0; };
    const double x = number();
    path.push_back({{x, number()}, *rc::gen::inRange(-200, 200) / 100.0});
  }
  const bool closed = *rc::gen::arbitrary<bool>();
  double expectedLength = 0;
  double expectedArea = 0;
  const std::size_t segments = closed ? path.size() : path.size() - 1;
  for (std::size_t i = 0; i < path.size(); ++i) {
    const Vector2 from = path[i].point;
    const Vector2 to = path[(i + 1) % path.size()].point;
    if (i >= segments) {
      expectedArea += cross(from, to) / 2;
      continue;
    }
    if (from == to) continue;
    Vector2 last = from;
    constexpr int steps = 4000;
    for (int step = 1; step <= steps; ++step) {
      Vector2 next = from + (1.0 * step / steps) * (to - from);
      if (std::abs(path[i].bulge) > 0.001) {
        const EllipticalArc arc = EllipticalArc::ofBulge(from, to, path[i].bulge);
        next = arc.at(arc.start + arc.sweep * step / steps);
      }
      expectedLength += length(next - last);
      expectedArea += cross(last, next) / 2;
      last = next;
    }
  }
  RC_ASSERT(std::abs(expectedLength - pathLength(path, closed)) < 1e-3);
  RC_ASSERT(std::abs(expectedArea - signedPathArea(path, closed)) < 1e-2);
}

}  // namespace
}  // namespace velt::automation
