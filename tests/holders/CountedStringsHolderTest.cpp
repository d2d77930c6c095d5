#include "holders/CountedStringsHolder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/embedded/com/Balance.h"
#include "tests/support/ToyHost.h"

namespace velt::holders {
namespace {

using com::Balance;

CALPOLESTR strings(const std::vector<std::wstring>& texts) {
  CALPOLESTR made{static_cast<ULONG>(texts.size()),
                  static_cast<LPOLESTR*>(CoTaskMemAlloc(texts.size() * sizeof(LPOLESTR)))};
  for (std::size_t i = 0; i < texts.size(); ++i)
    made.pElems[i] = SysAllocString(texts[i].c_str());
  return made;
}

CADWORD cookies(const std::vector<DWORD>& numbers) {
  CADWORD made{static_cast<ULONG>(numbers.size()),
               static_cast<DWORD*>(CoTaskMemAlloc(numbers.size() * sizeof(DWORD)))};
  for (std::size_t i = 0; i < numbers.size(); ++i)
    made.pElems[i] = numbers[i];
  return made;
}

TEST(CountedStringsHolder, FreesTheStringsBeforeTheArrays) {
  toys::ToyHost host;
  {
    CountedStringsHolder holder;
    *holder.putStrings() = strings({L"one", L"two"});
    *holder.putCookies() = cookies({7, 8});
    EXPECT_STREQ(L"two", holder.string(1));
    EXPECT_EQ(8U, holder.cookie(1));
  }
  EXPECT_EQ(host.log.only({"SysFreeString", "CoTaskMemFree"}),
            (toys::Lines{"SysFreeString(one)", "SysFreeString(two)", "CoTaskMemFree()", "CoTaskMemFree()"}));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST(CountedStringsHolder, HasNoStringForACookieBeyondTheStrings) {
  const Balance balance;
  CountedStringsHolder holder;
  holder.attach({strings({L"one"}), cookies({7, 8})});
  EXPECT_EQ(1U, holder.stringCount());
  EXPECT_EQ(2U, holder.cookieCount());
  EXPECT_EQ(nullptr, holder.string(1));
}

TEST(CountedStringsHolder, ACountWithoutAnArrayCountsAsZero) {
  const Balance balance;
  CountedStringsHolder holder;
  *holder.putStrings() = {77, nullptr};
  *holder.putCookies() = {77, nullptr};
  EXPECT_EQ(0U, holder.stringCount());
  EXPECT_EQ(0U, holder.cookieCount());
}

TEST(CountedStringsHolder, MovesAndDetachesBothArrays) {
  const Balance balance;
  CountedStringsHolder first;
  first.attach({strings({L"one"}), cookies({7})});
  CountedStringsHolder second;
  second.attach({strings({L"two"}), cookies({8})});
  second = std::move(first);
  EXPECT_STREQ(L"one", second.string(0));
  EXPECT_EQ(0U, first.stringCount());
  const CountedStrings detached = second.detach();
  EXPECT_EQ(0U, second.cookieCount());
  first.attach(detached);
}

#ifndef NDEBUG
TEST(CountedStringsHolderDeathTest, RefusesASecondListWhileItIsFull) {
  CountedStringsHolder holder;
  holder.attach({strings({L"one"}), cookies({7})});
  EXPECT_DEATH(static_cast<void>(holder.putStrings()), "pElems == nullptr");
  EXPECT_DEATH(static_cast<void>(holder.putCookies()), "pElems == nullptr");
  EXPECT_DEATH(holder.attach({}), "pElems == nullptr");
}
#endif

}  // namespace
}  // namespace velt::holders
