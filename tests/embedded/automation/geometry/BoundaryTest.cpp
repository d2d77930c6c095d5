#include "embedded/automation/geometry/Boundary.h"

#include <gtest/gtest.h>

#include <numbers>

#include "embedded/automation/geometry/Angle.h"

namespace velt::automation {
namespace {

using std::numbers::pi;

BoundaryLoop box(double low, double high) {
  return std::vector<BulgeVertex>{{{low, low}}, {{high, low}}, {{high, high}}, {{low, high}}};
}

EllipticalArc circle(Vector2 center, double radius) {
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
  const BoundaryLoop inner = edges({circle({5, 5}, 2).reversed()});
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
  EXPECT_THROW(areaOf({edges({circle({0, 0}, 2)}), edges({circle({3, 0}, 2)})}), BoundaryError);
}

TEST(Boundary, ALoopThatCrossesItselfIsRefused) {
  EXPECT_THROW(areaOf({std::vector<BulgeVertex>{{{0, 0}}, {{2, 2}}, {{2, 0}}, {{0, 2}}}}), BoundaryError);
}

TEST(Boundary, FarFromTheOriginNothingIsLost) {
  const Vector2 far{4e6, -5e6};
  EXPECT_NEAR(4 * pi, areaOf({edges({circle(far, 2)})}), 1e-8);
  std::vector<BulgeVertex> path = {
      {far}, {far + Vector2{1, 0}}, {far + Vector2{1, 1}}, {far + Vector2{0, 1}}};
  EXPECT_NEAR(1, areaOf({path}), 1e-12);
}

}  // namespace
}  // namespace velt::automation
