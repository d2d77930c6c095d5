#include "samples/builder/Parts.h"

#include <gtest/gtest.h>

#include <set>

namespace velt::samples {
namespace {

TEST(PartsTest, EveryPartHasAHandleOfItsOwn) {
  // given
  Parts parts(DrawingVersion::AC1027);
  parts.block("DOOR");
  parts.application("ACME");
  std::set<Handle> seen;
  // when
  for (const Handle handle : {parts.rootDictionary, parts.groups, parts.layouts, parts.plotStyles,
                              parts.normalPlotStyle, parts.modelLayout, parts.paperLayout, parts.activeView,
                              parts.standardDimensionStyle, parts.applications.front().handle})
    EXPECT_TRUE(seen.insert(handle).second) << handle;
  for (const auto& [name, handle] : parts.tables)
    EXPECT_TRUE(seen.insert(handle).second) << name;
  for (const Block& block : parts.blocks) {
    for (const Handle handle : {block.record, block.begin, block.end})
      EXPECT_TRUE(seen.insert(handle).second) << block.name;
  }
  // then
  EXPECT_FALSE(seen.contains(0));
  EXPECT_EQ(parts.nextHandle, *seen.rbegin() + 1);
}

TEST(PartsTest, ABlockAndAnApplicationAreMadeOnce) {
  Parts parts(DrawingVersion::AC1018);
  Block& door = parts.block("DOOR", {1, 2, 3});
  parts.application("ACME");
  for (int i = 0; i < 100; ++i)
    parts.block("B" + std::to_string(i));
  const Handle next = parts.nextHandle;

  EXPECT_EQ(&parts.block("DOOR"), &door) << "blocks stay where they are";
  EXPECT_EQ(door.base.z, 3);
  parts.application("ACME");
  EXPECT_EQ(parts.nextHandle, next);
}

TEST(PartsTest, ADrawingBeginsWithItsTwoSpaces) {
  const Parts parts(DrawingVersion::AC1027);
  ASSERT_EQ(parts.blocks.size(), 2U);
  EXPECT_TRUE(parts.blocks[0].isModel());
  EXPECT_TRUE(parts.blocks[1].isPaper());
}

}  // namespace
}  // namespace velt::samples
