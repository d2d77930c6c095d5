#include <gtest/gtest.h>

#include <cmath>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWith3DFace() {
  // clang-format off
  return Sample()
      .entity("3DFACE", {{100, "AcDbFace"}, {10, "0"}, {20, "0"}, {30, "0"}, {11, "4"}, {21, "0"}, {31, "0"}, {12, "4"}, {22, "3"}, {32, "0"}, {13, "0"}, {23, "3"}, {33, "4"}, {70, "2"}})
      .entity("3DFACE", {{100, "AcDbFace"}, {10, "0"}, {20, "0"}, {11, "4"}, {21, "0"}, {12, "4"}, {22, "3"}})
      .open();
  // clang-format on
}

TEST(SpatialFaceTest, HasCornersAndEdges) {
  const auto drawing = drawingWith3DFace();
  const Bound made(*drawing, 0);
  EXPECT_EQ((Numbers{0, 3, 4}), made.numbers(L"Corner4"));
  EXPECT_TRUE(made.flag(L"VisibleEdge1"));
  EXPECT_FALSE(made.flag(L"VisibleEdge2"));
  EXPECT_DOUBLE_EQ(6 + std::sqrt(12.0 * 12 + 16 * 16 + 12 * 12) / 2, made.real(L"Area"));
  EXPECT_EQ((Numbers{4, 3, 0}), Bound(*drawing, 1).numbers(L"Corner4")) << "a triangle";
  EXPECT_EQ(6, Bound(*drawing, 1).real(L"Area"));
}

TEST(SpatialFaceTest, HidesAnEdge) {
  const auto drawing = drawingWith3DFace();
  const Bound made(*drawing, 0);
  EXPECT_EQ(S_OK, made.put(L"VisibleEdge4", test::flag(false)).result);
  EXPECT_FALSE(made.flag(L"VisibleEdge4"));
  EXPECT_FALSE(made.flag(L"VisibleEdge2"));
  EXPECT_TRUE(made.flag(L"VisibleEdge1"));
}

}  // namespace
}  // namespace velt::automation
