#include "samples/builder/Pairs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velt::samples {
namespace {

using ::testing::ElementsAre;

// Each as "code value".
std::vector<std::string> linesOf(const Pairs& pairs) {
  std::vector<std::string> lines;
  for (const RawPair& pair : pairs)
    lines.push_back(std::to_string(pair.code) + " " + pair.value);
  return lines;
}

TEST(PairsTest, ANumberStandsAsItIsWrittenDown) {
  EXPECT_THAT(linesOf({{70, 20}, {40, 20.0}, {41, -0.5}, {90, -1056964608}}),
              ElementsAre("70 20", "40 20.0", "41 -0.5", "90 -1056964608"));
}

TEST(PairsTest, AHandleStandsInHexadecimalDigitsAndATextAsItIs) {
  EXPECT_THAT(linesOf({{340, Handle{0x1F}}, {1, "a b"}, {300, ""}, {3, std::string(" c")}}),
              ElementsAre("340 1F", "1 a b", "300 ", "3  c"));
}

TEST(PairsTest, PairsAndListsOfPairsMakeAListInTheirOrder) {
  const Pairs end{{1, "x"}};
  EXPECT_THAT(linesOf({subclass("AcDbRay"), point(10, 1, 2.0, 3), flatPoint(11, 4, 5), Pairs{}, end}),
              ElementsAre("100 AcDbRay", "10 1", "20 2.0", "30 3", "11 4", "21 5", "1 x"));
  EXPECT_THAT(linesOf(each(40, {0.0, 0.5})), ElementsAre("40 0.0", "40 0.5"));
  EXPECT_THAT(linesOf({}), ElementsAre());
}

}  // namespace
}  // namespace velt::samples
