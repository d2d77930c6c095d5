#include "embedded/platform/Categories.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace velt::platform {
namespace {

TEST(Categories, EveryPredefinedNumberHasItsRowInOrder) {
  PROPCAT expected = -1;
  for (const CategoryName& row : categoryNames)
    EXPECT_EQ(expected--, number(row.category));
  EXPECT_EQ(lastPredefinedCategory - 1, expected);
}

TEST(Categories, NoTwoHeadingsAreAlikeAndNoneIsEmpty) {
  std::set<std::wstring> names;
  for (const CategoryName& row : categoryNames)
    names.insert(row.name);
  EXPECT_EQ(std::size(categoryNames), names.size());
  EXPECT_FALSE(names.contains(L""));
}

}  // namespace
}  // namespace velt::platform
