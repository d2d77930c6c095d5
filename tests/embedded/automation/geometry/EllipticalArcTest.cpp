#include "embedded/automation/geometry/EllipticalArc.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <numbers>

#include "embedded/automation/geometry/Angle.h"

namespace velt::automation {
namespace {

using std::numbers::pi;

void expectNear(Vector2 expected, Vector2 actual) {
  EXPECT_NEAR(expected.x, actual.x, 1e-12);
  EXPECT_NEAR(expected.y, actual.y, 1e-12);
}

// The sum over many short chords, which comes closer and closer to the integral.
double summedIntegral(const EllipticalArc& arc) {
  constexpr int steps = 2000000;
  double total = 0;
  Vector2 from = arc.first();
  for (int step = 1; step <= steps; ++step) {
    const Vector2 to = arc.at(arc.start + arc.sweep * step / steps);
    total += cross(from, to) / 2;
    from = to;
  }
  return total;
}

TEST(EllipticalArc, OfABulgeRunsFromPointToPoint) {
  for (const double bulge : {1.0, -1.0, 0.25, -0.4, 3.0, 1e-5}) {
    const EllipticalArc arc = EllipticalArc::ofBulge({1, 2}, {4, -1}, bulge);
    EXPECT_NEAR(0, length(arc.first() - Vector2{1, 2}), 1e-9) << bulge;
    EXPECT_NEAR(0, length(arc.last() - Vector2{4, -1}), 1e-9) << bulge;
  }
}

TEST(EllipticalArc, ABulgeOfOneIsAHalfCircleToTheRightOfItsChord) {
  const EllipticalArc arc = EllipticalArc::ofBulge({0, 0}, {2, 0}, 1);
  expectNear({1, 0}, arc.center);
  expectNear({1, -1}, arc.at(arc.start + arc.sweep / 2));
}

TEST(EllipticalArc, ANegativeBulgeLiesOnTheOtherSide) {
  const EllipticalArc arc = EllipticalArc::ofBulge({0, 0}, {2, 0}, -1);
  expectNear({1, 1}, arc.at(arc.start + arc.sweep / 2));
}

TEST(EllipticalArc, TheBoundaryIntegralIsTheOneOfItsChords) {
  const EllipticalArc arc{{3, -2}, {4, 1}, {-0.5, 2}, 0.3, 4.2};
  EXPECT_NEAR(summedIntegral(arc), arc.boundaryIntegral(), 1e-9);
  EXPECT_NEAR(-arc.boundaryIntegral(), arc.reversed().boundaryIntegral(), 1e-12);
}

TEST(EllipticalArc, AnglesAndParametersAgreeAtQuarterTurnsAndKeepTheirTurn) {
  for (const double turn : {-2 * pi, 0.0, 2 * pi, 4 * pi}) {
    for (const double quarter : {0.0, pi / 2, pi, 3 * pi / 2}) {
      EXPECT_NEAR(turn + quarter, angleOfParameter(turn + quarter, 0.5), 1e-12);
      EXPECT_NEAR(turn + quarter, parameterOfAngle(turn + quarter, 0.5), 1e-12);
    }
  }
}

TEST(EllipticalArc, AnglesAndParametersUndoEachOther) {
  for (double parameter = -7; parameter < 7; parameter += 0.37) {
    EXPECT_NEAR(parameter, parameterOfAngle(angleOfParameter(parameter, 0.3), 0.3), 1e-12);
  }
  // tan(angle) = ratio * tan(parameter)
  EXPECT_NEAR(std::atan(0.5), angleOfParameter(pi / 4, 0.5), 1e-12);
}

TEST(EllipticalArc, TheSegmentOfAHalfCircleIsHalfTheDiscAndOfAWholeOneTheDisc) {
  EXPECT_NEAR(pi * 9 / 2, segmentArea(3, 3, pi), 1e-12);
  EXPECT_NEAR(pi * 3 * 2, segmentArea(3, 2, 2 * pi), 1e-12);
}

TEST(Angle, NormalizedAnglesLieBetweenZeroAndAFullTurn) {
  EXPECT_EQ(0, normalizedAngle(0));
  EXPECT_EQ(0, normalizedAngle(fullTurn));
  EXPECT_EQ(0, normalizedAngle(-fullTurn));
  EXPECT_NEAR(3 * pi / 2, normalizedAngle(-pi / 2), 1e-12);
  EXPECT_LT(normalizedAngle(-1e-300), fullTurn);
}

TEST(Angle, ASweepWhoseEndsCoincideIsAFullTurn) {
  EXPECT_EQ(fullTurn, sweepBetween(1, 1));
  EXPECT_EQ(fullTurn, sweepBetween(0, fullTurn));
  EXPECT_NEAR(pi, sweepBetween(3 * pi / 2, pi / 2), 1e-12);
}

}  // namespace
}  // namespace velt::automation
