#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "palette/Palette.h"

namespace velt::palette {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(NearestNames, NamesThatWereProbablyMeantAreFound) {
  const std::vector<std::string> names{"Radius", "Layer", "Linetype", "Linetype scale", "Lineweight"};
  EXPECT_THAT(namesLike("Raduis", names), ElementsAre("Radius"));
  EXPECT_THAT(namesLike("linetyp", names), ElementsAre("Linetype", "Linetype scale"));
  EXPECT_THAT(namesLike("Thickness", names), IsEmpty());
  EXPECT_EQ(didYouMean("Lyer", names), "; did you mean Layer?");
  EXPECT_EQ(didYouMean("linetyp", names), "; did you mean Linetype or Linetype scale?");
  EXPECT_EQ(didYouMean("Thickness", names, "; there are five"), "; there are five");
}

TEST(NearestNames, TheNearestComesFirstHoweverTheNamesAreOrdered) {
  EXPECT_THAT(namesLike("linetyp", std::vector<std::string>{"Linetype scale", "Linetype"}),
              ElementsAre("Linetype", "Linetype scale"));
}

TEST(NearestNames, NamesThatOnlyHoldWhatWasWrittenFollowInAlphabeticalOrder) {
  EXPECT_THAT(namesLike("line", std::vector<std::string>{"Linexy", "Line of sight", "Lines"}),
              ElementsAre("Lines", "Line of sight", "Linexy"));
}

}  // namespace velt::palette
