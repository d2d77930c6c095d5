#include "embedded/automation/polylines/PolylineShape.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/Toys.h"

namespace velt::automation {
namespace {

using namespace test;

class PolylineShapeTest : public ::testing::Test {
 protected:
  [[nodiscard]] Subject subject(std::size_t index) const {
    const VkDbObjectId id = drawing->entities()[index];
    return Subject(*database::resolve(id), id, toyClass);
  }

  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .entity("LWPOLYLINE", {{100, "AcDbPolyline"}, {90, "3"}, {70, "1"}, {43, "0.5"}, {38, "7"},
                             {10, "1"}, {20, "2"}, {42, "0.25"},
                             {10, "3"}, {20, "4"}, {40, "0.1"}, {41, "0.2"},
                             {10, "5"}, {20, "6"}})
      .entity("LWPOLYLINE", {{100, "AcDbPolyline"}, {10, "9"}, {20, "8"}})
      .open();
  // clang-format on
};

TEST_F(PolylineShapeTest, ReadsPointsBulgesAndWidths) {
  const PolylineShape shape = polylineShape(subject(0));
  ASSERT_EQ(3U, shape.vertices.size());
  EXPECT_TRUE(shape.closed);
  EXPECT_EQ((Vector2{1, 2}), shape.vertices[0].place.point);
  EXPECT_EQ(0.25, shape.vertices[0].place.bulge);
  EXPECT_EQ(0, shape.vertices[1].place.bulge);
  EXPECT_EQ(0.5, shape.vertices[0].startWidth) << "the common width";
  EXPECT_EQ(0.5, shape.vertices[0].endWidth);
  EXPECT_EQ(0.1, shape.vertices[1].startWidth);
  EXPECT_EQ(0.2, shape.vertices[1].endWidth);
  EXPECT_EQ((Vector2{5, 6}), shape.path()[2].point);
}

TEST_F(PolylineShapeTest, OnePolylineIsNotTakenForAnother) {
  EXPECT_EQ(3U, polylineShape(subject(0)).vertices.size());
  EXPECT_EQ(1U, polylineShape(subject(1)).vertices.size());
  EXPECT_FALSE(polylineShape(subject(1)).closed);
  EXPECT_EQ(3U, polylineShape(subject(0)).vertices.size());
}

TEST_F(PolylineShapeTest, AnEditIsSeen) {
  const std::uint32_t record = subject(0).record();
  EXPECT_EQ(3U, polylineShape(subject(0)).vertices.size());
  drawing->edit(record, [&](dxf::Document& document) { document.set(record, 10, "AcDbPolyline", "77.0"); });
  EXPECT_EQ(77, polylineShape(subject(0)).vertices[0].place.point.x);
}

TEST_F(PolylineShapeTest, ADrawingInTheSamePlaceIsNotTakenForTheOldOne) {
  EXPECT_EQ(3U, polylineShape(subject(0)).vertices.size());
  for (int i = 0; i < 5; ++i) {
    drawing.reset();
    drawing = Sample().entity("LWPOLYLINE", {{100, "AcDbPolyline"}, {10, "1"}, {20, "2"}}).open();
    EXPECT_EQ(1U, polylineShape(subject(0)).vertices.size());
    drawing.reset();
    drawing = Sample().entity("LWPOLYLINE", {{100, "AcDbPolyline"}}).open();
    EXPECT_EQ(0U, polylineShape(subject(0)).vertices.size());
  }
}

}  // namespace
}  // namespace velt::automation
