#include "embedded/automation/geometry/ObjectFrame.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

namespace velt::automation {
namespace {

void expectNear(const Vector3& expected, const Vector3& actual) {
  EXPECT_NEAR(expected.x, actual.x, 1e-12);
  EXPECT_NEAR(expected.y, actual.y, 1e-12);
  EXPECT_NEAR(expected.z, actual.z, 1e-12);
}

TEST(ObjectFrame, AnUprightNormalPassesCoordinatesThroughUnrounded) {
  const ObjectFrame frame({0, 0, 5});
  const Vector3 point{0.1, -1e9 + 0.3, 1e-300};
  EXPECT_EQ(point, frame.toWorld(point));
  EXPECT_EQ(point, frame.toObject(point));
}

TEST(ObjectFrame, ANormalWithoutADirectionCountsAsUpright) {
  EXPECT_EQ((Vector3{1, 2, 3}), ObjectFrame({0, 0, 0}).toWorld({1, 2, 3}));
}

TEST(ObjectFrame, ADownwardNormalMirrorsXAndZ) {
  // The normal of mirrored entities, the commonest of all that are not upright.
  expectNear({-1, 2, -3}, ObjectFrame({0, 0, -1}).toWorld({1, 2, 3}));
}

TEST(ObjectFrame, TheAxesOfASlopingNormalFollowTheArbitraryAxisRule) {
  // World Z x (1, 0, 0) is world Y; (1, 0, 0) x world Y is world Z.
  const ObjectFrame frame({1, 0, 0});
  expectNear({0, 1, 0}, frame.toWorld({1, 0, 0}));
  expectNear({0, 0, 1}, frame.toWorld({0, 1, 0}));
  expectNear({1, 0, 0}, frame.toWorld({0, 0, 1}));
}

TEST(ObjectFrame, TheRuleChangesAtOneSixtyFourth) {
  const double limit = 1.0 / 64;
  const auto xAxisOf = [](double slope) {
    return ObjectFrame({slope, 0, std::sqrt(1 - slope * slope)}).toWorld({1, 0, 0});
  };
  expectNear({0, 1, 0}, xAxisOf(limit));  // world Z decides
  const double below = limit * (1 - 1e-9);
  expectNear({std::sqrt(1 - below * below), 0, -below}, xAxisOf(below));  // world Y decides
}

TEST(ObjectFrame, ToObjectUndoesToWorld) {
  for (const Vector3& normal :
       {Vector3{0, 0, -1}, Vector3{1, 2, 3}, Vector3{-0.001, 0.002, -7}, Vector3{0, 1, 0}}) {
    const ObjectFrame frame(normal);
    const Vector3 point{12.5, -3, 700};
    expectNear(point, frame.toObject(frame.toWorld(point)));
    EXPECT_NEAR(length(point), length(frame.toWorld(point)), 1e-12);
  }
}

}  // namespace
}  // namespace velt::automation
