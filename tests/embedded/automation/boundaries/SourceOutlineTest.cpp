#include "embedded/automation/boundaries/SourceOutline.h"

#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/database/Sample.h"

namespace velt::automation {
namespace {

using database::Drawing;
using database::test::entityRecord;
using database::test::Pairs;
using database::test::record;
using database::test::Sample;

class SourceOutlineTest : public ::testing::Test {
 protected:
  std::optional<SourceOutline> of(const Sample& sample, const Vector3& normal = {0, 0, 1}) {
    drawing = sample.open();
    return sourceOutline(*drawing, entityRecord(*drawing), ObjectFrame(normal));
  }

  std::unique_ptr<Drawing> drawing;
};

const Pairs closedPolyline = {{100, "AcDbPolyline"},
                              {70, "1"},
                              {38, "7"},
                              {10, "0"},
                              {20, "0"},
                              {42, "1"},
                              {10, "4"},
                              {20, "0"},
                              {10, "4"},
                              {20, "3"},
                              {10, "4"},
                              {20, "3"},
                              {10, "0"},
                              {20, "3"}};

TEST_F(SourceOutlineTest, APolylineConsistsOfItsSegmentsButForThoseWithoutLength) {
  const auto outline = of(Sample().entity("LWPOLYLINE", closedPolyline));
  ASSERT_TRUE(outline);
  EXPECT_EQ(7, outline->height);
  ASSERT_EQ(4U, outline->segments.size());
  EXPECT_EQ((OutlineSegment{{0, 0}, {4, 0}, 1}), outline->segments[0]);
  EXPECT_EQ((Vector2{2, -2}), outline->segments[0].middle());
  EXPECT_EQ((OutlineSegment{{4, 3}, {0, 3}}), outline->segments[2]);
  EXPECT_EQ((OutlineSegment{{0, 3}, {0, 0}}), outline->segments[3]) << "it is closed";
}

TEST_F(SourceOutlineTest, OfAPolylineWithVerticesOfTheirOwnTheMembersAreTold) {
  const auto polyline = [&](const std::string& flags) {
    return of(Sample()
                  .entity("POLYLINE", {{70, flags}, {10, "0"}, {20, "0"}, {30, "5"}})
                  .append(record("VERTEX", {{10, "1"}, {20, "2"}, {42, "0.5"}}))
                  .append(record("VERTEX", {{10, "3"}, {20, "4"}}))
                  .append(record("SEQEND", {})));
  };
  const auto outline = polyline("0");
  ASSERT_TRUE(outline);
  ASSERT_EQ(1U, outline->segments.size()) << "it is open";
  EXPECT_EQ((OutlineSegment{{1, 2}, {3, 4}, 0.5}), outline->segments[0]);
  EXPECT_EQ(5, outline->height);
  EXPECT_EQ(2U, polyline("1")->segments.size());
  for (const char* const flags : {"2", "4", "8", "16", "64"})
    EXPECT_FALSE(polyline(flags)) << "smoothed, in space, or a mesh: " << flags;
}

TEST_F(SourceOutlineTest, ACircleAndAnEllipseAreWhole) {
  const auto round = of(Sample().entity("CIRCLE", {{10, "1"}, {20, "2"}, {30, "3"}, {40, "4"}}));
  ASSERT_TRUE(round && round->whole);
  EXPECT_EQ((Vector2{1, 2}), round->whole->center);
  EXPECT_EQ((Vector2{4, 0}), round->whole->major);
  EXPECT_EQ(3, round->height);
  const auto ellipse = [&](const std::string& end) {
    return of(Sample().entity("ELLIPSE", {{10, "1"},
                                          {20, "2"},
                                          {30, "3"},
                                          {11, "0"},
                                          {21, "4"},
                                          {31, "0"},
                                          {40, "0.5"},
                                          {41, "0"},
                                          {42, end}}));
  };
  const auto whole = ellipse("6.283185307179586");
  ASSERT_TRUE(whole && whole->whole);
  EXPECT_EQ((Vector2{0, 4}), whole->whole->major);
  EXPECT_EQ((Vector2{-2, 0}), whole->whole->minor);
  EXPECT_FALSE(ellipse("3")) << "a part has ends, which others would have to meet";
  EXPECT_FALSE(of(Sample().entity("CIRCLE", {{40, "0"}})));
}

TEST_F(SourceOutlineTest, APlaneSeenFromBehindMirrorsTheOutline) {
  const auto outline = of(Sample().entity("LWPOLYLINE", closedPolyline), {0, 0, -1});
  ASSERT_TRUE(outline);
  EXPECT_EQ((OutlineSegment{{0, 0}, {-4, 0}, -1}), outline->segments[0]);
  EXPECT_EQ((Vector2{-2, -2}), outline->segments[0].middle()) << "the arc bends to the same side";
  EXPECT_EQ(-7, outline->height);
}

TEST_F(SourceOutlineTest, WhatStandsInAnotherPlaneHasNone) {
  EXPECT_FALSE(of(Sample().entity("LWPOLYLINE", closedPolyline), {0, 1, 0}));
  EXPECT_FALSE(of(Sample().entity("CIRCLE", {{40, "1"}, {210, "0"}, {220, "1"}, {230, "0"}})));
  EXPECT_FALSE(of(Sample().entity("LINE", {{10, "1"}}))) << "the ends of others would have to follow it";
}

}  // namespace
}  // namespace velt::automation
