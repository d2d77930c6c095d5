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

}  // namespace
}  // namespace velt::tool
