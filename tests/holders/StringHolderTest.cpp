#include "holders/StringHolder.h"

#include <gtest/gtest.h>

#include "tests/embedded/com/Balance.h"

namespace velt::holders {
namespace {

using com::Balance;

TEST(StringHolder, OwnsItsStringAndShowsAllOfIt) {
  const Balance balance;
  StringHolder holder(std::wstring_view(L"a\0b", 3));
  EXPECT_EQ(std::wstring_view(L"a\0b", 3), holder.view());
  holder = StringHolder(L"other");
  EXPECT_EQ(L"other", holder.view());
  const BSTR detached = holder.detach();
  EXPECT_FALSE(holder);
  EXPECT_TRUE(holder.view().empty());
  *holder.put() = detached;
  EXPECT_EQ(L"other", holder.view());
}

TEST(StringHolder, TakesOverAStringOfTheCallers) {
  const Balance balance;
  const auto holder = StringHolder::owning(SysAllocString(L"mine"));
  EXPECT_STREQ(L"mine", holder.get());
}

#ifndef NDEBUG
TEST(StringHolderDeathTest, RefusesASecondStringWhileItIsFull) {
  StringHolder holder(L"x");
  EXPECT_DEATH(static_cast<void>(holder.put()), "held_ == nullptr");
  EXPECT_DEATH(holder.attach(holder.get()), "held_ == nullptr");
}
#endif

}  // namespace
}  // namespace velt::holders
