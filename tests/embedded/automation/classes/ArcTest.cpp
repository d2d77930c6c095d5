#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;

class ArcTest : public ::testing::Test {
 protected:
  Bound arc(const std::string& start, const std::string& end, const std::string& upwards = "1") {
    // clang-format off
    drawing = Sample()
        .entity("ARC", {{100, "AcDbCircle"}, {39, "9"}, {10, "1"}, {20, "2"}, {30, "3"}, {40, "2"},
                        {210, "0"}, {220, "0"}, {230, upwards}, {100, "AcDbArc"}, {50, start}, {51, end}})
        .open();
    // clang-format on
    return Bound(*drawing, 0);
  }
  static void expectPoint(const std::vector<double>& expected, const std::vector<double>& actual) {
    ASSERT_EQ(3U, actual.size());
    for (std::size_t i = 0; i < 3; ++i)
      EXPECT_NEAR(expected[i], actual[i], 1e-14) << i;
  }

  std::unique_ptr<Drawing> drawing;
};

TEST_F(ArcTest, ItsMeasuresFollowFromRadiusAndAngles) {
  const Bound made = arc("0", "90");
  EXPECT_EQ(0, made.real(L"StartAngle"));
  EXPECT_NEAR(pi / 2, made.real(L"EndAngle"), 1e-15);
  EXPECT_NEAR(pi / 2, made.real(L"TotalAngle"), 1e-15);
  EXPECT_NEAR(pi, made.real(L"ArcLength"), 1e-15);
  EXPECT_NEAR(pi - 2, made.real(L"Area"), 1e-14) << "a quarter disc without its triangle";
  expectPoint({3, 2, 3}, made.numbers(L"StartPoint"));
  expectPoint({1, 4, 3}, made.numbers(L"EndPoint"));
  EXPECT_EQ(2, made.real(L"Radius"));
  EXPECT_EQ(9, made.real(L"Thickness"));
}

TEST_F(ArcTest, TheRadiusFollowsTheArea) {
  const Bound made = arc("0", "180");
  EXPECT_EQ(S_OK, made.put(L"Area", number(4.5 * pi)).result);
  EXPECT_NEAR(3, made.real(L"Radius"), 1e-15);
  EXPECT_NEAR(pi, made.real(L"TotalAngle"), 1e-15);
  EXPECT_EQ(E_INVALIDARG, made.put(L"Area", number(0)).scode);
  EXPECT_EQ(E_FAIL, arc("0", "0.00000001").put(L"Area", number(1)).scode) << "too short";
}

TEST_F(ArcTest, RunsThroughTheZeroOfItsAngles) {
  const Bound made = arc("270", "45");
  EXPECT_NEAR(135 * pi / 180, made.real(L"TotalAngle"), 1e-15);
  EXPECT_NEAR(3 * pi / 2, made.real(L"StartAngle"), 1e-15);
}

TEST_F(ArcTest, EndsThatCoincideMakeAFullTurn) {
  const Bound made = arc("30", "390");
  EXPECT_NEAR(2 * pi, made.real(L"TotalAngle"), 1e-14);
  EXPECT_NEAR(4 * pi, made.real(L"Area"), 1e-13);
}

TEST_F(ArcTest, AMirroredArcIsOfferedInTheWorldWithTheAnglesOfItsPlane) {
  const Bound made = arc("0", "90", "-1");
  expectPoint({-1, 2, -3}, made.numbers(L"Center"));
  expectPoint({-3, 2, -3}, made.numbers(L"StartPoint"));
  expectPoint({-1, 4, -3}, made.numbers(L"EndPoint"));
  EXPECT_EQ(0, made.real(L"StartAngle"));
}

TEST_F(ArcTest, AnglesArePutAsDirections) {
  const Bound made = arc("0", "90");
  EXPECT_EQ(S_OK, made.put(L"StartAngle", number(-pi / 6)).result);
  EXPECT_NEAR(11 * pi / 6, made.real(L"StartAngle"), 1e-14);
  EXPECT_EQ(L"330.0", database::Lens(*drawing, recordOf(*drawing, 0)).text(50, "AcDbArc"));
  EXPECT_NEAR(2 * pi / 3, made.real(L"TotalAngle"), 1e-14);
  EXPECT_EQ(S_OK, made.put(L"Radius", number(3)).result);
  EXPECT_EQ(3, made.real(L"Radius"));
}

TEST_F(ArcTest, TheEndsOfAnArcDoNotCoincide) {
  const Bound made = arc("0", "90");
  const std::string before = pairsOf(*drawing);
  EXPECT_EQ(E_INVALIDARG, made.put(L"StartAngle", number(pi / 2)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"EndAngle", number(2 * pi)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"Radius", number(0)).scode);
  EXPECT_EQ(before, pairsOf(*drawing));
}

}  // namespace
}  // namespace velt::automation
