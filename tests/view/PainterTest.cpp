#include "view/Painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

#include "samples/Gallery.h"
#include "tests/support/WholeDrawings.h"
#include "tests/view/Scene.h"

namespace velt::view {
namespace {

using namespace velt::tests;

TEST(Painter, WhatABlockShowsIsSeenOfTheReference) {
  const Scene scene(lineFromTo("0", "0", "1", "0") + insertOf("B"),
                    blockOf("B", lineFromTo("0", "0", "1", "0")));
  ASSERT_EQ(scene.size(), 2U);
  EXPECT_EQ(scene.drawing().document().type(scene[0].entity), "LINE");
  EXPECT_EQ(scene.drawing().document().type(scene[1].entity), "INSERT");
}

TEST(Painter, ABlockInsideItselfEndsThere) {
  const Scene scene(insertOf("A"),
                    blockOf("A", lineFromTo("0", "0", "1", "0") + insertOf("B") + insertOf("B"))
                        + blockOf("B", lineFromTo("0", "0", "2", "0") + insertOf("A") + insertOf("A")));
  EXPECT_EQ(scene.size(), 3U);
  EXPECT_FALSE(scene.picture().isCutShort);
}

TEST(Painter, BlocksThatMultiplyEachOtherEndAtTheLimit) {
  std::string blocks = blockOf("B0", lineFromTo("0", "0", "1", "0"));
  for (int i = 1; i < 40; ++i) {
    const std::string inner = insertOf("B" + std::to_string(i - 1));
    blocks += blockOf("B" + std::to_string(i), inner + inner);
  }
  const Scene scene(insertOf("B39"), blocks, {{"0"}}, {.limits = {.entities = 10'000}});
  EXPECT_TRUE(scene.picture().isCutShort);
  EXPECT_LT(scene.size(), 10'000U);
}

TEST(Painter, RowsAndColumnsWithoutEndEndAtTheLimit) {
  const Scene scene(insertOf("B", {{70, "32767"}, {71, "32767"}, {44, "1"}, {45, "1"}}),
                    blockOf("B", lineFromTo("0", "0", "1", "0")), {{"0"}}, {.limits = {.entities = 10'000}});
  EXPECT_TRUE(scene.picture().isCutShort);
}

TEST(Painter, ErasedEntitiesAreNotSeen) {
  auto drawing = database::Drawing::parse(drawingOf({{"0"}}, line("A1", "0") + line("A2", "0")), "erased");
  drawing->setErased(*drawing->recordByHandle(0xA1), true);
  EXPECT_EQ(Scene(std::move(drawing), {}).size(), 1U);
}

TEST(Painter, EveryEntityOfTheGalleryThatHasAPictureIsSeen) {
  const Scene scene(database::Drawing::parse(samples::galleryDrawing(), "gallery"),
                    {.scale = 4, .window = Box{{-1000, -1000}, {1000, 1000}}});
  std::set<std::string> seen;
  for (const Primitive& primitive : scene.picture().primitives)
    seen.emplace(scene.drawing().document().type(primitive.entity));
  for (const char* type :
       {"LINE",       "ARC",      "CIRCLE",  "ELLIPSE",     "SPLINE",    "RAY",    "XLINE",       "POINT",
        "LWPOLYLINE", "POLYLINE", "MLINE",   "HATCH",       "SOLID",     "TRACE",  "3DFACE",      "MESH",
        "TEXT",       "ATTDEF",   "MTEXT",   "INSERT",      "DIMENSION", "LEADER", "MULTILEADER", "TOLERANCE",
        "SHAPE",      "IMAGE",    "WIPEOUT", "PDFUNDERLAY", "ACAD_TABLE"})
    EXPECT_TRUE(seen.contains(type)) << type;
}

// Coarsely, and as finely as a large window shows it.
TEST(Painter, WholeDrawingsAreDrawnInAllTheirSpaces) {
  forEachDrawing([](const WholeDrawing& whole) {
    const auto drawing = database::Drawing::parse(whole.bytes, whole.name);
    const Contents contents(*drawing);
    for (const Space& space : spacesOf(*drawing)) {
      const Picture coarse = draw(*drawing, contents, space, {});
      EXPECT_FALSE(coarse.isCutShort);
      const double size = std::max(1.0, coarse.extents.size());
      const Picture fine = draw(*drawing, contents, space, {.scale = 2000 / size, .window = coarse.extents});
      EXPECT_FALSE(fine.isCutShort);
      EXPECT_EQ(fine.isEmpty(), coarse.isEmpty());
      EXPECT_TRUE(
          std::all_of(fine.primitives.begin(), fine.primitives.end(), [&](const Primitive& primitive) {
            return primitive.entity < drawing->document().recordCount()
                   && std::isfinite(primitive.box.size());
          }));
    }
  });
}

}  // namespace
}  // namespace velt::view
