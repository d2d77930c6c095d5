#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithPolyline() {
  // clang-format off
  return Sample()
      .entity("POLYLINE", {{66, "1"}, {100, "AcDb2dPolyline"}, {10, "0"}, {20, "0"}, {30, "5"}, {70, "129"}, {40, "0.5"}, {41, "0.25"}, {39, "2"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb2dVertex"}, {10, "0"}, {20, "0"}, {42, "1"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb2dVertex"}, {10, "4"}, {20, "0"}, {40, "1"}, {41, "2"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb2dVertex"}, {10, "4"}, {20, "3"}})
      .entity("SEQEND", {{8, "0"}})
      .entity("POLYLINE", {{66, "1"}, {100, "AcDb2dPolyline"}, {70, "4"}, {75, "6"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb2dVertex"}, {10, "0"}, {20, "0"}, {70, "16"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb2dVertex"}, {10, "9"}, {20, "9"}, {70, "16"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb2dVertex"}, {10, "0"}, {20, "0"}, {70, "8"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb2dVertex"}, {10, "3"}, {20, "4"}, {70, "8"}})
      .entity("SEQEND", {{8, "0"}})
      .entity("POLYLINE", {{66, "1"}, {100, "AcDb2dPolyline"}, {70, "2"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb2dVertex"}, {10, "0"}, {20, "0"}, {70, "2"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb2dVertex"}, {10, "3"}, {20, "0"}, {70, "1"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb2dVertex"}, {10, "5"}, {20, "0"}, {70, "2"}})
      .entity("SEQEND", {{8, "0"}})
      .open();
  // clang-format on
}

TEST(PolylineTest, HasVerticesOfTheirOwn) {
  const auto drawing = drawingWithPolyline();
  const Bound made(*drawing, 0);
  EXPECT_EQ((Numbers{0, 0, 4, 0, 4, 3}), made.numbers(L"Vertex"));
  EXPECT_EQ(0.5, made.element(L"Vertex", 2)) << "the width that all segments have";
  EXPECT_EQ(2, made.element(L"Vertex", 7));
  EXPECT_EQ(0.5, made.real(L"StartSeg"));
  EXPECT_EQ(0.25, made.real(L"EndSeg"));
  EXPECT_EQ(5, made.real(L"Elevation"));
  EXPECT_TRUE(made.flag(L"Closed"));
  EXPECT_TRUE(made.flag(L"LinetypeGeneration"));
  EXPECT_EQ(0, made.integer(L"FitSmooth"));
  EXPECT_NEAR(2 * pi + 3 + 5, made.real(L"Length"), 1e-14);
  EXPECT_NEAR(6 + 2 * pi, made.real(L"Area"), 1e-14);
}

TEST(PolylineTest, ASmoothOneIsMeasuredAlongItsCurveAndKnownByItsFrame) {
  const auto drawing = drawingWithPolyline();
  const Bound smooth(*drawing, 1);
  EXPECT_EQ(6, smooth.integer(L"FitSmooth"));
  EXPECT_EQ((Numbers{0, 0, 9, 9}), smooth.numbers(L"Vertex"));
  EXPECT_EQ(5, smooth.real(L"Length"));
  const Bound fitted(*drawing, 2);
  EXPECT_EQ(1, fitted.integer(L"FitSmooth"));
  EXPECT_EQ((Numbers{0, 0, 5, 0}), fitted.numbers(L"Vertex"));
  EXPECT_EQ(5, fitted.real(L"Length"));
}

}  // namespace
}  // namespace velt::automation
