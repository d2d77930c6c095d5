#include "embedded/automation/dimensions/StyleOverrides.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

class StyleOverridesTest : public ::testing::Test {
 protected:
  // Pairs are counted with the type of the entity as the first.
  std::optional<StyleOverrides> find(Pairs pairs) {
    drawing = Sample().entity("LEADER", pairs).open();
    return findOverrides(database::Lens(*drawing, recordOf(*drawing, 0)));
  }
  std::unique_ptr<Drawing> drawing;
};

TEST_F(StyleOverridesTest, StandInTheListOfThatNameOfOneApplication) {
  // clang-format off
  const auto list = find({{1001, "OTHER"}, {1000, "DSTYLE"}, {1002, "{"}, {1002, "}"},
                          {1001, "ACAD"}, {1000, "LIST"}, {1002, "{"}, {1002, "}"},
                          {1000, "DSTYLE"}, {1002, "{"}, {1070, "41"}, {1040, "2"}, {1070, "77"}, {1070, "1"}, {1002, "}"}});
  // clang-format on
  ASSERT_TRUE(list);
  EXPECT_EQ(11U, list->begin);
  EXPECT_EQ(15U, list->end);
  EXPECT_TRUE(list->isWhole);
}

TEST_F(StyleOverridesTest, AreNoneWithoutTheListOrTheApplication) {
  EXPECT_FALSE(find({{8, "0"}}));
  EXPECT_FALSE(find({{1001, "OTHER"}, {1000, "DSTYLE"}, {1002, "{"}, {1002, "}"}}));
  EXPECT_FALSE(find({{1001, "ACAD"}, {1000, "LIST"}, {1002, "{"}, {1002, "}"}}));
}

TEST_F(StyleOverridesTest, OfADamagedListAreThoseBeforeTheDamage) {
  const auto open = find({{1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1070, "41"}, {1040, "2"}});
  ASSERT_TRUE(open);
  EXPECT_EQ(2U, open->end - open->begin);
  EXPECT_FALSE(open->isWhole);
  const auto lonely = find({{1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1070, "41"}, {1002, "}"}});
  ASSERT_TRUE(lonely);
  EXPECT_EQ(lonely->begin, lonely->end);
  EXPECT_FALSE(lonely->isWhole);
  const auto cutShort = find({{1001, "ACAD"}, {1000, "DSTYLE"}});
  ASSERT_TRUE(cutShort);
  EXPECT_FALSE(cutShort->isWhole);
}

}  // namespace
}  // namespace velt::automation
