#include "view/Spaces.h"

#include <gtest/gtest.h>

#include "samples/Gallery.h"
#include "tests/view/Scene.h"

namespace velt::view {
namespace {

using namespace velt::tests;

TEST(Spaces, OldDrawingsHaveModelSpaceAndASheetWithoutAName) {
  const auto drawing = database::Drawing::parse(
      drawingOf({{"0"}},
                line("A1", "0")
                    + pairs({{0, "LINE"}, {8, "0"}, {67, "1"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "0"}})),
      "old");
  const std::vector<Space> spaces = spacesOf(*drawing);
  ASSERT_EQ(spaces.size(), 2U);
  EXPECT_EQ(spaces[0].name, L"Model");
  EXPECT_EQ(spaces[1].name, L"Paper");
  EXPECT_TRUE(spaces[1].isPaper);
  const Contents contents(*drawing);
  EXPECT_EQ(contents.of(spaces[0].contents).size(), 1U);
  EXPECT_EQ(contents.of(spaces[1].contents).size(), 1U);
}

TEST(Spaces, LayoutsHaveTheirNames) {
  const auto drawing = database::Drawing::parse(samples::galleryDrawing(), "gallery");
  const std::vector<Space> spaces = spacesOf(*drawing);
  ASSERT_GE(spaces.size(), 2U);
  EXPECT_EQ(spaces[0].name, L"Model");
  const Contents contents(*drawing);
  EXPECT_EQ(contents.ofModelSpace(), spaces[0].contents);
  EXPECT_GT(contents.of(contents.ofModelSpace()).size(), 20U);
}

TEST(Spaces, EntitiesOfBlocksAreNotInModelSpace) {
  const auto drawing = database::Drawing::parse(
      drawingOf({{"0"}}, insertOf("B"), blockOf("B", line("A1", "0") + line("A2", "0"))), "b");
  const Contents contents(*drawing);
  EXPECT_EQ(contents.of(contents.ofModelSpace()).size(), 1U);
  const database::TableEntry* const block = drawing->blocks().find(L"B");
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(contents.of(drawing->blocks().indexOf(*block)).size(), 2U);
}

}  // namespace
}  // namespace velt::view
