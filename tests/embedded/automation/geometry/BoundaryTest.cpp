#include "embedded/automation/geometry/Boundary.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstddef>
#include <iterator>
#include <numbers>
#include <utility>
#include <vector>

#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/Effort.h"

namespace velt::automation {
namespace {

using std::numbers::pi;

BoundaryLoop box(double low, double high) {
  return std::vector<BulgeVertex>{{{low, low}}, {{high, low}}, {{high, high}}, {{low, high}}};
}

EllipticalArc circularEdge(Vector2 center, double radius) {
  return {center, {radius, 0}, {0, radius}, 0, fullTurn};
}

BoundaryLoop edges(std::vector<BoundaryEdge> list) {
  return list;
}

double areaOf(std::vector<BoundaryLoop> loops, IslandStyle style = IslandStyle::Normal) {
  return boundedArea(loops, style);
}

TEST(Boundary, NothingBoundsNothing) {
  EXPECT_EQ(0, areaOf({}));
}

TEST(Boundary, APolylineWithBulgesIsExact) {
  EXPECT_NEAR(pi, areaOf({std::vector<BulgeVertex>{{{-1, 0}, 1}, {{1, 0}, 1}}}), 1e-14);
}

TEST(Boundary, EdgesOfAllKindsMakeALoop) {
  // Half a disc over a box, its right side a parabola that bulges outwards.
  const Spline right = Spline::make(2, {0, 0, 0, 1, 1, 1}, {{1, -2}, {2, -1}, {1, 0}}, {}).value();
  const double expected =
      2 * 2 + pi / 2 + 2.0 * 2 / 3 * 0.5;  // under a parabola: two thirds of base by height
  EXPECT_NEAR(expected,
              areaOf({edges({LineEdge{{-1, 0}, {-1, -2}}, LineEdge{{-1, -2}, {1, -2}}, right,
                             EllipticalArc{{0, 0}, {1, 0}, {0, 1}, 0, pi}})}),
              1e-12);
}

TEST(Boundary, AnEdgeMayStandTheWrongWayRound) {
  EXPECT_NEAR(pi / 2,
              areaOf({edges({EllipticalArc{{0, 0}, {1, 0}, {0, 1}, pi, -pi}, LineEdge{{-1, 0}, {1, 0}}})}),
              1e-14);
  EXPECT_NEAR(1,
              areaOf({edges({LineEdge{{1, 0}, {0, 0}}, LineEdge{{1, 0}, {1, 1}}, LineEdge{{0, 1}, {1, 1}},
                             LineEdge{{0, 1}, {0, 0}}})}),
              1e-14);
}

TEST(Boundary, RoundedEndsStillMeet) {
  EXPECT_NEAR(1,
              areaOf({edges({LineEdge{{0, 0}, {1, 0}}, LineEdge{{1.000001, 0}, {1, 1}},
                             LineEdge{{1, 1.000001}, {0, 1}}, LineEdge{{0, 1}, {0, 0.000001}}})}),
              1e-5);
}

TEST(Boundary, EdgesThatDoNotMeetAreRefused) {
  EXPECT_THROW(
      areaOf({edges({LineEdge{{0, 0}, {1, 0}}, LineEdge{{1, 0.1}, {1, 1}}, LineEdge{{1, 1}, {0, 0}}})}),
      BoundaryError);
  EXPECT_THROW(areaOf({edges({LineEdge{{0, 0}, {1, 0}}, LineEdge{{1, 0}, {1, 1}}})}), BoundaryError)
      << "the loop is open";
}

TEST(Boundary, IslandsAreLeftOutByTheirStyle) {
  const std::vector<BoundaryLoop> rings = {box(0, 10), box(1, 9), box(2, 8), box(3, 7)};
  EXPECT_NEAR(100 - 64 + 36 - 16, areaOf(rings, IslandStyle::Normal), 1e-12);
  EXPECT_NEAR(100 - 64, areaOf(rings, IslandStyle::Outer), 1e-12);
  EXPECT_NEAR(100, areaOf(rings, IslandStyle::Ignore), 1e-12);
}

TEST(Boundary, TheOrderAndTheTurnOfTheLoopsDoNotMatter) {
  const BoundaryLoop inner = edges({circularEdge({5, 5}, 2).reversed()});
  EXPECT_NEAR(100 - 4 * pi, areaOf({inner, box(0, 10)}), 1e-12);
  EXPECT_NEAR(100 - 4 * pi, areaOf({box(0, 10), inner}), 1e-12);
}

TEST(Boundary, LoopsBesideEachOtherAddUp) {
  EXPECT_NEAR(1 + 4, areaOf({box(0, 1), box(5, 7)}), 1e-12);
  EXPECT_NEAR(1 + 4, areaOf({box(0, 1), box(5, 7)}, IslandStyle::Ignore), 1e-12);
}

TEST(Boundary, AnIslandMayTouchItsBorder) {
  EXPECT_NEAR(100 - 9, areaOf({box(0, 10), box(0, 3)}), 1e-12);
}

TEST(Boundary, LoopsThatCrossAreRefused) {
  EXPECT_THROW(areaOf({box(0, 10), box(5, 15)}), BoundaryError);
  EXPECT_THROW(areaOf({edges({circularEdge({0, 0}, 2)}), edges({circularEdge({3, 0}, 2)})}), BoundaryError);
}

TEST(Boundary, ALoopThatCrossesItselfIsRefused) {
  EXPECT_THROW(areaOf({std::vector<BulgeVertex>{{{0, 0}}, {{2, 2}}, {{2, 0}}, {{0, 2}}}}), BoundaryError);
}

TEST(Boundary, FarFromTheOriginNothingIsLost) {
  const Vector2 far{4e6, -5e6};
  EXPECT_NEAR(4 * pi, areaOf({edges({circularEdge(far, 2)})}), 1e-8);
  std::vector<BulgeVertex> path = {
      {far}, {far + Vector2{1, 0}}, {far + Vector2{1, 1}}, {far + Vector2{0, 1}}};
  EXPECT_NEAR(1, areaOf({path}), 1e-12);
}

TEST(Boundary, ThatReachesTooFarIsRefused) {
  EXPECT_THROW(areaOf({box(-1e200, 1e200)}), BoundaryError) << "its area is no number";
  EXPECT_THROW(areaOf({box(-1e308, 1e308)}), BoundaryError);
}

// --- many loops ---------------------------------------------------------------------------------------------------------

BoundaryLoop rectangularLoop(Vector2 low, Vector2 high) {
  return std::vector<BulgeVertex>{{low}, {{high.x, low.y}}, {high}, {{low.x, high.y}}};
}

BoundaryLoop triangle(Vector2 corner) {
  return std::vector<BulgeVertex>{{corner}, {corner + Vector2{1, 0}}, {corner + Vector2{0, 1}}};
}

// The simplest way: each rectangle is looked for in every other one.
struct Rectangle {
  Vector2 low;
  Vector2 high;
  [[nodiscard]] double area() const { return (high.x - low.x) * (high.y - low.y); }
  [[nodiscard]] bool holds(const Rectangle& other) const {
    return low.x <= other.low.x && low.y <= other.low.y && high.x >= other.high.x && high.y >= other.high.y;
  }
};

double simpleArea(const std::vector<Rectangle>& rectangles, IslandStyle style) {
  double total = 0;
  for (std::size_t i = 0; i < rectangles.size(); ++i) {
    int depth = 0;
    for (std::size_t j = 0; j < rectangles.size(); ++j) {
      const bool isSame = rectangles[i].holds(rectangles[j]) && rectangles[j].holds(rectangles[i]);
      if (i != j && rectangles[j].holds(rectangles[i]) && (!isSame || j < i)) ++depth;
    }
    const bool counts = style == IslandStyle::Normal || depth <= (style == IslandStyle::Outer ? 1 : 0);
    if (counts) total += depth % 2 == 0 ? rectangles[i].area() : -rectangles[i].area();
  }
  return total;
}

// Cuts a rectangle in two, again and again, and puts some of the parts into it: they nest, touch and coincide, and never
// cross.
void cut(const Rectangle& whole, int depth, std::vector<Rectangle>& made) {
  if (*rc::gen::inRange(0, 3) > 0) made.push_back(whole);
  if (depth == 0) return;
  const double at = *rc::gen::inRange(1, 8) / 8.0;
  const bool upright = *rc::gen::arbitrary<bool>();
  Rectangle first = whole;
  Rectangle second = whole;
  if (upright) {
    first.high.x = second.low.x = whole.low.x + at * (whole.high.x - whole.low.x);
  } else {
    first.high.y = second.low.y = whole.low.y + at * (whole.high.y - whole.low.y);
  }
  cut(first, depth - 1, made);
  cut(second, depth - 1, made);
}

RC_GTEST_PROP(Boundary, HasTheAreaThatALookAtEveryPairOfLoopsGives, ()) {
  std::vector<Rectangle> rectangles;
  cut({{0, 0}, {1024, 1024}}, *rc::gen::inRange(0, 7), rectangles);
  std::vector<BoundaryLoop> loops;
  for (const Rectangle& one : rectangles)
    loops.push_back(rectangularLoop(one.low, one.high));
  for (const IslandStyle style : {IslandStyle::Normal, IslandStyle::Outer, IslandStyle::Ignore})
    RC_ASSERT(std::abs(areaOf(loops, style) - simpleArea(rectangles, style)) < 1e-6);
}

RC_GTEST_PROP(Boundary, FindsACrossingWhereverItIs, ()) {
  std::vector<BoundaryLoop> loops;
  const int rows = *rc::gen::inRange(1, 20);
  for (int x = 0; x < rows; ++x) {
    for (int y = 0; y < rows; ++y)
      loops.push_back(triangle({2.0 * x, 2.0 * y}));
  }
  RC_ASSERT(std::abs(areaOf(loops) - rows * rows / 2.0) < 1e-9);
  const Vector2 into = {2.0 * *rc::gen::inRange(0, rows) + 0.25, 2.0 * *rc::gen::inRange(0, rows) + 0.25};
  loops.insert(loops.begin() + *rc::gen::inRange<std::ptrdiff_t>(0, std::ssize(loops)), triangle(into));
  RC_ASSERT_THROWS_AS(areaOf(loops), BoundaryError);
}

// Comparing every two of them takes more steps than they are worth.
TEST(Boundary, TakesLoopsByTheTenThousand) {
  std::vector<BoundaryLoop> loops;
  for (int x = 0; x < 100; ++x) {
    for (int y = 0; y < 100; ++y)
      loops.push_back(triangle({2.0 * x, 2.0 * y}));
  }
  EXPECT_NEAR(100 * 100 / 2.0, areaOf(loops), 1e-6);
  loops.push_back(rectangularLoop({-1, -1}, {201, 201}));
  EXPECT_NEAR(202 * 202 - 100 * 100 / 2.0, areaOf(loops), 1e-6);
}

TEST(Boundary, TakesManyIslandsInOneLongCoast) {
  std::vector<BulgeVertex> coast;
  constexpr int teeth = 20'000;
  for (int x = 0; x < teeth; ++x) {
    coast.push_back({{x * 1.0, 0}});
    coast.push_back({{x + 0.5, 1}});
  }
  coast.push_back({{teeth, 0}});
  coast.push_back({{teeth, -100}});
  coast.push_back({{0, -100}});
  std::vector<BoundaryLoop> loops = {coast};
  for (int x = 0; x < 2'000; ++x)
    loops.push_back(triangle({x * 2.0, -50}));
  EXPECT_NEAR(teeth * 100.5 - 2'000 / 2.0, areaOf(loops), 1e-5);
}

TEST(Boundary, OfRingsInsideRingsByTheThousandIsNotComputed) {
  std::vector<BoundaryLoop> loops;
  for (int ring = 1; ring <= 2'500; ++ring)
    loops.push_back(box(-ring, ring));
  EXPECT_THROW(areaOf(loops), NotComputed);
  loops.resize(1'000);
  double expected = 0;
  for (int ring = 1'000; ring > 0; --ring)
    expected += (ring % 2 == 0 ? 4.0 : -4.0) * ring * ring;
  EXPECT_NEAR(expected, areaOf(loops), 1e-3);
}

TEST(Boundary, OfLongStripsAboveEachOtherByTheThousandIsNotComputed) {
  std::vector<BoundaryLoop> loops;
  for (int x = 0; x < 2'500; ++x) {
    const Vector2 foot{3.0 * x, 0};
    const Vector2 far{1e6, 1e6};
    loops.push_back(
        std::vector<BulgeVertex>{{foot}, {foot + Vector2{1, 0}}, {foot + far + Vector2{1, 0}}, {foot + far}});
  }
  EXPECT_THROW(areaOf(loops), NotComputed);
}

}  // namespace
}  // namespace velt::automation
