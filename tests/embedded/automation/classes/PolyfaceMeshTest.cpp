#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithPolyfaceMesh() {
  // clang-format off
  return Sample()
      .entity("POLYLINE", {{66, "1"}, {100, "AcDbPolyFaceMesh"}, {70, "64"}, {71, "9"}, {72, "9"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDbPolyFaceMeshVertex"}, {10, "1"}, {70, "192"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDbPolyFaceMeshVertex"}, {10, "2"}, {70, "192"}})
      .entity("VERTEX", {{100, "AcDbVertex"}, {100, "AcDbPolyFaceMeshVertex"}, {10, "3"}, {70, "192"}})
      .entity("VERTEX", {{100, "AcDbFaceRecord"}, {10, "0"}, {70, "128"}, {71, "1"}, {72, "2"}, {73, "3"}})
      .entity("SEQEND", {{8, "0"}})
      .open();
  // clang-format on
}

TEST(PolyfaceMeshTest, HasVerticesAndFaces) {
  const auto drawing = drawingWithPolyfaceMesh();
  const Bound made(*drawing, 0);
  EXPECT_EQ(3, made.integer(L"NumberOfVertices")) << "what is there counts, not what the head says";
  EXPECT_EQ(1, made.integer(L"NumberOfFaces"));
  EXPECT_EQ((Numbers{1, 0, 0, 2, 0, 0, 3, 0, 0}), made.numbers(L"Vertex"));
}

}  // namespace
}  // namespace velt::automation
