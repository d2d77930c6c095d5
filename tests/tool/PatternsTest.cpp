#include "tool/Patterns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velt::tool {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Patterns, AStarStandsForAnyCharactersAndAQuestionMarkForOne) {
  EXPECT_TRUE(fits("W*", "Walls"));
  EXPECT_TRUE(fits("*", ""));
  EXPECT_TRUE(fits("*a*b*b", "xaxbxb"));
  EXPECT_TRUE(fits("?alls", "Walls"));
  EXPECT_FALSE(fits("W?", "Walls"));
  EXPECT_FALSE(fits("W*x", "Walls"));
  EXPECT_FALSE(fits("?", ""));
  EXPECT_FALSE(fits("Wall", "Walls"));
}

TEST(Patterns, UpperAndLowerCaseDoNotDifferInAnyScript) {
  EXPECT_TRUE(fits("wALLS", "Walls"));
  EXPECT_TRUE(fits("W\u00C4NDE*", "w\u00E4nde neu"));
  EXPECT_TRUE(fits("W?nde", "W\u00E4nde")) << "one character, not one byte";
}

TEST(Patterns, ALongTextIsTriedWithoutTryingEverything) {
  EXPECT_FALSE(fits("*a*a*a*a*a*a*a*a*b", std::string(5000, 'a')));
}

TEST(Patterns, WhatFollowsAStarDoesNotBeginBeforeIt) {
  EXPECT_FALSE(fits("xab*abc", "xabc"));
  EXPECT_FALSE(fits("Walls*s", "Walls"));
  EXPECT_TRUE(fits("xab*abc", "xababc"));
}

TEST(Patterns, WhatFollowsAStarStandsTogether) {
  EXPECT_FALSE(fits("*ab", "axb"));
  EXPECT_TRUE(fits("*ab", "aab"));
  EXPECT_FALSE(fits("W*a?c", "Waxbc"));
}

TEST(Patterns, AnEmptyPatternIsThatOfAnEmptyTextOnly) {
  EXPECT_TRUE(fits("", ""));
  EXPECT_FALSE(fits("", "W"));
  EXPECT_TRUE(fits("Walls**", "Walls"));
}

}  // namespace
}  // namespace velt::tool
