#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithSpline() {
  // clang-format off
  return Sample()
      .entity("SPLINE", {{100, "AcDbSpline"}, {210, "0"}, {220, "0"}, {230, "1"}, {70, "12"}, {71, "2"}, {40, "0"}, {40, "0"}, {40, "0"}, {40, "1"}, {40, "1"}, {40, "1"}, {41, "1"}, {41, "0.7071067811865476"}, {41, "1"}, {10, "2"}, {20, "0"}, {30, "5"}, {10, "2"}, {20, "2"}, {30, "5"}, {10, "0"}, {20, "2"}, {30, "5"}})
      .entity("SPLINE", {{100, "AcDbSpline"}, {70, "8"}, {71, "1"}, {40, "0"}, {40, "0"}, {40, "1"}, {40, "2"}, {40, "2"}, {10, "0"}, {20, "0"}, {30, "0"}, {10, "2"}, {20, "3"}, {30, "6"}, {10, "2"}, {20, "3"}, {30, "7"}, {11, "1"}, {21, "1"}, {31, "1"}})
      .entity("SPLINE", {{100, "AcDbSpline"}, {70, "0"}, {71, "3"}, {11, "1"}, {21, "1"}, {31, "1"}})
      .open();
  // clang-format on
}

TEST(SplineTest, IsMeasuredAlongTheCurve) {
  const auto drawing = drawingWithSpline();
  const Bound made(*drawing, 0);
  EXPECT_NEAR(pi, made.real(L"Length"), 1e-12) << "a quarter of a circle";
  EXPECT_NEAR(pi - 2, made.real(L"Area"), 1e-12);
  EXPECT_EQ(3, made.integer(L"NumberOfControlPoints"));
  EXPECT_EQ(1, made.real(L"Weight"));
  EXPECT_EQ(2, made.integer(L"Degree"));
  EXPECT_TRUE(made.flag(L"Rational"));
  EXPECT_EQ((Numbers{2, 0, 5, 2, 2, 5, 0, 2, 5}), made.numbers(L"ControlPoint"));
  EXPECT_EQ(2, made.element(L"ControlPoint", 4));
}

TEST(SplineTest, ACurveInSpaceHasALengthAndNoArea) {
  const auto drawing = drawingWithSpline();
  const Bound made(*drawing, 1);
  EXPECT_NEAR(8, made.real(L"Length"), 1e-12);
  EXPECT_EQ(DISP_E_EXCEPTION, made.get(L"Area").result);
  EXPECT_EQ(1, made.integer(L"NumberOfFitPoints"));
  EXPECT_EQ(1, made.element(L"FitPoint", 2));
}

TEST(SplineTest, ACurveThatLeavesThePlaneOfItsEndsHasNoArea) {
  // clang-format off
  const auto drawing = Sample()
      .entity("SPLINE", {{100, "AcDbSpline"}, {71, "3"}, {40, "0"}, {40, "0"}, {40, "0"}, {40, "0"}, {40, "1"}, {40, "1"}, {40, "1"}, {40, "1"}, {10, "0"}, {20, "0"}, {30, "0"}, {10, "1"}, {20, "1"}, {30, "2"}, {10, "2"}, {20, "1"}, {30, "1"}, {10, "3"}, {20, "0"}, {30, "0"}})
      .open();
  // clang-format on
  EXPECT_EQ(DISP_E_EXCEPTION, Bound(*drawing, 0).get(L"Area").result);
}

TEST(SplineTest, WithoutAControlPointThereIsNoCurve) {
  const auto drawing = drawingWithSpline();
  const Bound made(*drawing, 2);
  EXPECT_EQ(DISP_E_EXCEPTION, made.get(L"Length").result);
  EXPECT_EQ(DISP_E_EXCEPTION, made.get(L"Area").result);
  EXPECT_EQ(Numbers(), made.numbers(L"ControlPoint"));
}

TEST(SplineTest, ADegreeWithMoreDigitsThanAnyDegreeHasMakesNoCurve) {
  const std::string threeIn32Bits = std::to_string((std::int64_t{1} << 32) + 1);
  const auto drawing = Sample()
                           .entity("SPLINE", {{100, "AcDbSpline"},
                                              {71, threeIn32Bits},
                                              {40, "0"},
                                              {40, "0"},
                                              {40, "1"},
                                              {40, "1"},
                                              {10, "0"},
                                              {20, "0"},
                                              {10, "3"},
                                              {20, "4"}})
                           .open();
  EXPECT_EQ(DISP_E_EXCEPTION, Bound(*drawing, 0).get(L"Length").result);
}

}  // namespace
}  // namespace velt::automation
