#include "embedded/automation/geometry/BoxTree.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace velt::automation {
namespace {

std::vector<std::size_t> found(const BoxTree& tree, const Box& box) {
  std::vector<std::size_t> indexes;
  tree.visitMeeting(box, [&](std::size_t index) {
    indexes.push_back(index);
    return true;
  });
  std::sort(indexes.begin(), indexes.end());
  return indexes;
}

using Indexes = std::vector<std::size_t>;

TEST(BoxTree, WithoutBoxesFindsNone) {
  const BoxTree tree({});
  EXPECT_EQ(Indexes(), found(tree, {{-1, -1}, {1, 1}}));
}

TEST(BoxTree, FindsBoxesThatTouch) {
  const std::vector<Box> boxes = {{{0, 0}, {1, 1}}, {{2, 0}, {3, 1}}, {{0, 5}, {1, 6}}};
  const BoxTree tree(boxes);
  EXPECT_EQ((Indexes{0, 1}), found(tree, {{1, 1}, {2, 2}}));
  EXPECT_EQ((Indexes{2}), found(tree, {{0.5, 5.5}, {0.5, 5.5}}));
  EXPECT_EQ(Indexes(), found(tree, {{1.25, 0}, {1.75, 9}}));
}

TEST(BoxTree, StopsWhenToldTo) {
  const std::vector<Box> boxes(100, Box{{0, 0}, {1, 1}});
  int visited = 0;
  EXPECT_FALSE(BoxTree(boxes).visitMeeting({{0, 0}, {1, 1}}, [&](std::size_t) { return ++visited < 3; }));
  EXPECT_EQ(3, visited);
}

TEST(BoxTree, TakesBoxesAsLargeAsNumbersGo) {
  constexpr double most = std::numeric_limits<double>::max();
  const std::vector<Box> boxes(20, Box{{-most, -most}, {most, most}});
  EXPECT_EQ(20U, found(BoxTree(boxes), {{0, 0}, {0, 0}}).size());
}

RC_GTEST_PROP(BoxTree, FindsWhatALookAtEveryBoxFinds, ()) {
  const auto box = [] {
    const auto number = [] { return static_cast<double>(*rc::gen::inRange(-50, 50)); };
    Box made;
    made.include(Vector2{number(), number()});
    made.include(made.low
                 + Vector2{static_cast<double>(*rc::gen::inRange(0, 9)),
                           static_cast<double>(*rc::gen::inRange(0, 9))});
    return made;
  };
  std::vector<Box> boxes(*rc::gen::inRange<std::size_t>(0, 300));
  std::generate(boxes.begin(), boxes.end(), box);
  const Box asked = box();
  Indexes expected;
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    if (boxes[i].meets(asked)) expected.push_back(i);
  }
  RC_ASSERT(found(BoxTree(boxes), asked) == expected);
}

// Boxes side by side: each search looks at a few groups only, however many there are.
TEST(BoxTree, LooksAtFewBoxesForOne) {
  std::vector<Box> boxes;
  for (int x = 0; x < 300; ++x) {
    for (int y = 0; y < 300; ++y)
      boxes.push_back({{x + 0.1, y + 0.1}, {x + 0.9, y + 0.9}});
  }
  const BoxTree tree(boxes);
  for (std::size_t i = 0; i < boxes.size(); ++i)
    ASSERT_EQ(Indexes{i}, found(tree, boxes[i]));
}

}  // namespace
}  // namespace velt::automation
