#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWith3DPolyline() {
  // clang-format off
  return Sample()
      .entity("POLYLINE", {{66, "1"}, {100, "AcDb3dPolyline"}, {70, "9"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb3dPolylineVertex"}, {10, "0"}, {20, "0"}, {30, "0"}, {70, "32"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb3dPolylineVertex"}, {10, "3"}, {20, "4"}, {30, "0"}, {70, "32"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb3dPolylineVertex"}, {10, "3"}, {20, "4"}, {30, "12"}, {70, "32"}})
      .entity("SEQEND", {{8, "0"}})
      .entity("POLYLINE", {{66, "1"}, {100, "AcDb3dPolyline"}, {70, "12"}, {75, "5"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb3dPolylineVertex"}, {10, "0"}, {70, "48"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb3dPolylineVertex"}, {10, "9"}, {70, "48"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb3dPolylineVertex"}, {10, "0"}, {70, "40"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDb3dPolylineVertex"}, {10, "2"}, {70, "40"}})
      .entity("SEQEND", {{8, "0"}})
      .open();
  // clang-format on
}

TEST(SpatialPolylineTest, RunsThroughSpace) {
  const auto drawing = drawingWith3DPolyline();
  const Bound made(*drawing, 0);
  EXPECT_EQ(5 + 12 + 13, made.real(L"Length"));
  EXPECT_EQ(12, made.element(L"Vertex", 8));
  EXPECT_TRUE(made.flag(L"Closed"));
  EXPECT_EQ(0, made.integer(L"FitSmooth"));
  EXPECT_EQ(L"3D Polyline", made.text(L"EntityName"));
  const Bound smooth(*drawing, 1);
  EXPECT_EQ(5, smooth.integer(L"FitSmooth"));
  EXPECT_EQ((Numbers{0, 0, 0, 9, 0, 0}), smooth.numbers(L"Vertex"));
  EXPECT_EQ(2, smooth.real(L"Length"));
}

}  // namespace
}  // namespace velt::automation
