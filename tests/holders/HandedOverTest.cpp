#include "holders/HandedOver.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "holders/CountedStringsHolder.h"
#include "holders/StringHolder.h"
#include "holders/VariantHolder.h"
#include "host/com/Types.h"
#include "tests/embedded/com/Balance.h"

namespace velt::holders {
namespace {

using com::Balance;

// What nobody may free.
template <class T>
T* garbage() {
  return reinterpret_cast<T*>(std::uintptr_t{0x11});
}

TEST(HandedOver, WhatAFailingCallLeftIsNotGivenBackWhateverItIs) {
  const Balance balance;
  StringHolder text;
  *text.put() = garbage<OLECHAR>();
  VariantHolder value;
  value.put()->vt = VT_BSTR;
  value.get().bstrVal = garbage<OLECHAR>();
  CountedStringsHolder lists;
  *lists.putStrings() = {5, garbage<LPOLESTR>()};
  *lists.putCookies() = {5, garbage<DWORD>()};

  EXPECT_FALSE(handedOver(E_FAIL, text, value, lists));

  EXPECT_FALSE(text);
  EXPECT_EQ(VT_EMPTY, value.get().vt);
  EXPECT_EQ(0U, lists.stringCount());
  EXPECT_EQ(0U, lists.cookieCount());
}

TEST(HandedOver, EverySuccessHandsOver) {
  const Balance balance;
  StringHolder text;
  *text.put() = SysAllocString(L"x");
  EXPECT_TRUE(handedOver(S_OK, text));
  EXPECT_TRUE(handedOver(S_FALSE, text));
  EXPECT_EQ(L"x", text.view());
}

TEST(HandedOver, ACallWhoseResultIsNotLookedAtHandsOverWhatStandsInItsOutput) {
  const Balance balance;
  StringHolder text;
  *text.put() = SysAllocString(L"x");
}

template <class Result>
concept Accepted = requires(Result result) {
  handedOver(result);
};
static_assert(Accepted<HRESULT>);
static_assert(!Accepted<BOOL> && !Accepted<bool>, "0 is no there, and S_OK here");

}  // namespace
}  // namespace velt::holders
