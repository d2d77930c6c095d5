#include "tool/Lists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velt::tool {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Lists, NamesAreSeparatedByCommas) {
  EXPECT_THAT(splitList("Walls, New doors ,2F"), ElementsAre("Walls", "New doors", "2F"));
  EXPECT_THAT(splitList("Walls,,"), ElementsAre("Walls"));
  EXPECT_THAT(splitList(" "), IsEmpty());
}

TEST(Lists, ACommaThatBelongsToANameIsEscaped) {
  EXPECT_THAT(splitList("Width\\, inner,Height"), ElementsAre("Width, inner", "Height"));
  EXPECT_THAT(splitList("a\\b,c\\"), ElementsAre("a\\b", "c\\")) << "any other backslash stays";
}

TEST(Lists, BlanksAndTabsAroundANameAreNotPartOfIt) {
  EXPECT_THAT(splitList("\tWalls \t,\t,x, y z\t"), ElementsAre("Walls", "x", "y z"));
  EXPECT_THAT(splitList(""), IsEmpty());
  EXPECT_THAT(splitList(","), IsEmpty());
  EXPECT_THAT(splitList("T\u00FCr,\u8868"), ElementsAre("T\u00FCr", "\u8868"));
}

TEST(Lists, AnEscapedCommaMayBeginOrEndAName) {
  EXPECT_THAT(splitList("\\,a,b\\,"), ElementsAre(",a", "b,"));
  EXPECT_THAT(splitList("a\\,\\,b"), ElementsAre("a,,b"));
  EXPECT_THAT(splitList("\\,"), ElementsAre(","));
  EXPECT_THAT(splitList(std::string_view("a\\,b").substr(0, 2)), ElementsAre("a\\"))
      << "what follows the text is not part of it";
}

}  // namespace
}  // namespace velt::tool
