#include "embedded/automation/polylines/VertexEditor.h"

#include <gtest/gtest.h>

#include <limits>

#include "embedded/automation/polylines/PolylineShape.h"
#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

class VertexEditorTest : public ::testing::Test {
 protected:
  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .entity("LWPOLYLINE", {{90, "2"}, {70, "0"}, {43, "0.5"}, {10, "1.0"}, {20, "2.00"}, {42, "0.1"}, {10, "3.0"}, {41, "0.7"}, {20, "4.0"}})
      .entity("LWPOLYLINE", {{90, "2"}, {10, "1.0"}, {10, "3.0"}, {20, "4.0"}})
      .open();
  // clang-format on
  std::string first() const { return pairsOf(*drawing, recordOf(*drawing, 0)); }
  std::string second() const { return pairsOf(*drawing, recordOf(*drawing, 1)); }
};

TEST_F(VertexEditorTest, APlaceIsChangedInPlace) {
  putVertexPart(subjectOf(*drawing), 1, VertexPart::X, 7);
  EXPECT_EQ("90=2 70=0 43=0.5 10=1.0 20=2.00 42=0.1 10=7.0 41=0.7 20=4.0", first());
  putVertexPart(subjectOf(*drawing), 0, VertexPart::Y, 9);
  EXPECT_EQ("90=2 70=0 43=0.5 10=1.0 20=9.0 42=0.1 10=7.0 41=0.7 20=4.0", first());
}

TEST_F(VertexEditorTest, AMissingCoordinateIsMade) {
  putVertexPart(subjectOf(*drawing, 1), 0, VertexPart::Y, 5);
  EXPECT_EQ("90=2 10=1.0 20=5.0 10=3.0 20=4.0", second());
}

TEST_F(VertexEditorTest, AWidthOfAVertexEndsTheCommonWidth) {
  putVertexPart(subjectOf(*drawing), 0, VertexPart::StartWidth, 0.25);
  EXPECT_EQ("90=2 70=0 10=1.0 20=2.00 40=0.25 41=0.5 42=0.1 10=3.0 41=0.7 20=4.0 40=0.5", first());
  const PolylineShape& shape = polylineShape(subjectOf(*drawing));
  EXPECT_EQ(0.25, shape.vertices[0].startWidth);
  EXPECT_EQ(0.5, shape.vertices[0].endWidth);
  EXPECT_EQ(0.5, shape.vertices[1].startWidth);
  EXPECT_EQ(0.7, shape.vertices[1].endWidth);
}

TEST_F(VertexEditorTest, AWidthWithoutACommonOneIsTheVertexsOwn) {
  putVertexPart(subjectOf(*drawing, 1), 1, VertexPart::EndWidth, 2);
  EXPECT_EQ("90=2 10=1.0 10=3.0 20=4.0 41=2.0", second());
}

TEST_F(VertexEditorTest, ACommonWidthTakesTheOthersAway) {
  putCommonWidth(subjectOf(*drawing), 1.5);
  EXPECT_EQ("90=2 70=0 43=1.5 10=1.0 20=2.00 42=0.1 10=3.0 20=4.0", first());
  putCommonWidth(subjectOf(*drawing, 1), 0);
  EXPECT_EQ("90=2 10=1.0 10=3.0 20=4.0", second()) << "that is what it has";
  putCommonWidth(subjectOf(*drawing, 1), 2);
  EXPECT_EQ("90=2 43=2.0 10=1.0 10=3.0 20=4.0", second());
}

TEST_F(VertexEditorTest, AllPlacesAreChangedTogether) {
  putVertexPlaces(subjectOf(*drawing, 1), {1, 6, 3, 8});
  EXPECT_EQ("90=2 10=1.0 20=6.0 10=3.0 20=8.0", second());
}

TEST_F(VertexEditorTest, WhatAPolylineCannotHaveIsRefused) {
  const std::string before = drawing->document().bytes();
  const Subject subject = subjectOf(*drawing);
  EXPECT_EQ(E_INVALIDARG, refusalOf([&] { putVertexPart(subject, 0, VertexPart::EndWidth, -1); }));
  EXPECT_EQ(E_INVALIDARG, refusalOf([&] { putCommonWidth(subject, -1); }));
  EXPECT_EQ(E_INVALIDARG, refusalOf([&] { putVertexPlaces(subject, {1, 2}); }));
  EXPECT_EQ(E_INVALIDARG, refusalOf([&] { putVertexPlaces(subject, {1, 2, 3, 4, 5}); }));
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(DISP_E_OVERFLOW, refusalOf([&] { putVertexPart(subject, 0, VertexPart::X, nan); }));
  EXPECT_EQ(DISP_E_OVERFLOW, refusalOf([&] { putVertexPlaces(subject, {1, 2, 3, nan}); }));
  EXPECT_EQ(before, drawing->document().bytes());
}

}  // namespace
}  // namespace velt::automation
