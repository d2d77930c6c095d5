#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithPolygonMesh() {
  // clang-format off
  return Sample()
      .entity("POLYLINE", {{66, "1"}, {100, "AcDbPolygonMesh"}, {70, "21"}, {71, "2"}, {72, "1"}, {73, "3"}, {74, "4"}, {75, "8"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDbPolygonMeshVertex"}, {10, "1"}, {70, "80"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDbPolygonMeshVertex"}, {10, "2"}, {70, "80"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDbPolygonMeshVertex"}, {10, "3"}, {70, "72"}})
      .entity("SEQEND", {{8, "0"}})
      .open();
  // clang-format on
}

TEST(PolygonMeshTest, HasRowsAndColumns) {
  const auto drawing = drawingWithPolygonMesh();
  const Bound made(*drawing, 0);
  EXPECT_EQ(2, made.integer(L"MVertexCount"));
  EXPECT_EQ(1, made.integer(L"NVertexCount"));
  EXPECT_EQ(4, made.integer(L"NDensity"));
  EXPECT_TRUE(made.flag(L"MClose"));
  EXPECT_FALSE(made.flag(L"NClose"));
  EXPECT_EQ(8, made.integer(L"FitSmooth"));
  EXPECT_EQ((Numbers{1, 0, 0, 2, 0, 0}), made.numbers(L"Vertex"));
}

}  // namespace
}  // namespace velt::automation
