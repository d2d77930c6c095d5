#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;

class EllipseTest : public ::testing::Test {
 protected:
  // Half axes 4 along Y and 2, about (1, 2, 3).
  Bound ellipse(const std::string& start, const std::string& end, const std::string& upwards = "1") {
    // clang-format off
    drawing = Sample()
        .entity("ELLIPSE", {{100, "AcDbEllipse"}, {10, "1"}, {20, "2"}, {30, "3"}, {11, "0"}, {21, "4"}, {31, "0"},
                            {210, "0"}, {220, "0"}, {230, upwards}, {40, "0.5"}, {41, start}, {42, end}})
        .open();
    // clang-format on
    return Bound(*drawing, 0);
  }
  static void expectPoint(const std::vector<double>& expected, const std::vector<double>& actual) {
    ASSERT_EQ(3U, actual.size());
    for (std::size_t i = 0; i < 3; ++i)
      EXPECT_NEAR(expected[i], actual[i], 1e-12) << i;
  }

  std::unique_ptr<Drawing> drawing;
  const std::string whole = "6.283185307179586";
  const std::string quarter = "1.570796326794897";
  const std::string eighth = "0.785398163397448";
};

TEST_F(EllipseTest, AxesAndRadiiBelongTogether) {
  const Bound made = ellipse("0", whole);
  expectPoint({1, 2, 3}, made.numbers(L"Center"));
  expectPoint({0, 4, 0}, made.numbers(L"MajorAxis"));
  expectPoint({-2, 0, 0}, made.numbers(L"MinorAxis"));
  EXPECT_EQ(4, made.real(L"MajorRadius"));
  EXPECT_EQ(2, made.real(L"MinorRadius"));
  EXPECT_EQ(0.5, made.real(L"RadiusRatio"));
  EXPECT_NEAR(8 * pi, made.real(L"Area"), 1e-12);
}

TEST_F(EllipseTest, ANormalThatPointsDownTurnsTheMinorAxisRound) {
  const Bound made = ellipse("0", quarter, "-1");
  expectPoint({2, 0, 0}, made.numbers(L"MinorAxis"));
  expectPoint({1, 6, 3}, made.numbers(L"StartPoint"));
  expectPoint({3, 2, 3}, made.numbers(L"EndPoint"));
}

TEST_F(EllipseTest, PartsHaveEndsAnglesAndASegment) {
  const Bound made = ellipse("0", eighth);
  expectPoint({1, 6, 3}, made.numbers(L"StartPoint"));
  expectPoint({1 - std::numbers::sqrt2, 2 + 2 * std::numbers::sqrt2, 3}, made.numbers(L"EndPoint"));
  EXPECT_EQ(0, made.real(L"StartAngle"));
  EXPECT_NEAR(std::atan(0.5), made.real(L"EndAngle"), 1e-12);
  EXPECT_EQ(0, made.real(L"StartParameter"));
  EXPECT_NEAR(pi / 4, made.real(L"EndParameter"), 1e-12);
  EXPECT_NEAR(4 * (pi / 4 - std::sin(pi / 4)), made.real(L"Area"), 1e-12);
}

TEST_F(EllipseTest, ARadiusLeavesTheOther) {
  const Bound made = ellipse("0", whole);
  EXPECT_EQ(S_OK, made.put(L"MajorRadius", number(8)).result);
  expectPoint({0, 8, 0}, made.numbers(L"MajorAxis"));
  EXPECT_NEAR(2, made.real(L"MinorRadius"), 1e-15);
  EXPECT_EQ(S_OK, made.put(L"MinorRadius", number(4)).result);
  EXPECT_EQ(8, made.real(L"MajorRadius"));
  EXPECT_EQ(0.5, made.real(L"RadiusRatio"));
}

TEST_F(EllipseTest, TheRadiiFollowTheAreaInTheirRatio) {
  const Bound whole4 = ellipse("0", whole);
  EXPECT_EQ(S_OK, whole4.put(L"Area", number(32 * pi)).result);
  expectPoint({0, 8, 0}, whole4.numbers(L"MajorAxis"));
  EXPECT_EQ(0.5, whole4.real(L"RadiusRatio"));
  const Bound part = ellipse("0", eighth);
  EXPECT_EQ(S_OK, part.put(L"Area", number(16 * (pi / 4 - std::sin(pi / 4)))).result);
  EXPECT_NEAR(8, part.real(L"MajorRadius"), 1e-12);
  EXPECT_EQ(E_INVALIDARG, part.put(L"Area", number(0)).scode);
}

TEST_F(EllipseTest, TheMinorRadiusIsNotGreaterThanTheMajorOne) {
  const Bound made = ellipse("0", whole);
  const std::string before = pairsOf(*drawing);
  EXPECT_EQ(E_INVALIDARG, made.put(L"MajorRadius", number(1)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"MinorRadius", number(5)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"RadiusRatio", number(1.01)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"RadiusRatio", number(1e-9)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"MinorRadius", number(0)).scode);
  EXPECT_EQ(DISP_E_EXCEPTION, made.put(L"MajorRadius", number(1e308)).result) << "too flat";
  EXPECT_EQ(before, pairsOf(*drawing));
}

TEST_F(EllipseTest, AnglesAndParametersOfTheEndsBelongTogether) {
  const Bound made = ellipse("0", quarter);
  EXPECT_EQ(S_OK, made.put(L"EndAngle", number(std::atan(0.5))).result);
  EXPECT_NEAR(pi / 4, made.real(L"EndParameter"), 1e-12);
  EXPECT_EQ(S_OK, made.put(L"StartParameter", number(5)).result);
  EXPECT_EQ(5, made.real(L"StartParameter"));
}

TEST_F(EllipseTest, TheEndsOfAPartDoNotCoincide) {
  const Bound part = ellipse("0", quarter);
  EXPECT_EQ(E_INVALIDARG, part.put(L"EndAngle", number(2 * pi)).scode);
  EXPECT_EQ(E_INVALIDARG, part.put(L"StartParameter", number(std::stod(quarter))).scode);
  const Bound full = ellipse("0", whole);
  const std::string before = pairsOf(*drawing);
  EXPECT_EQ(S_OK, full.put(L"StartAngle", number(0)).result) << "a whole ellipse stays one";
  EXPECT_EQ(before, pairsOf(*drawing));
  EXPECT_EQ(S_OK, full.put(L"StartAngle", number(pi / 2)).result);
  EXPECT_NEAR(pi / 2, full.real(L"StartParameter"), 1e-12);
}

}  // namespace
}  // namespace velt::automation
