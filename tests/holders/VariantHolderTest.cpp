#include "holders/VariantHolder.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/embedded/com/Balance.h"
#include "tests/support/ToyHost.h"

namespace velt::holders {
namespace {

using com::Balance;

VARIANT text(const wchar_t* characters) {
  VARIANT value{};
  value.vt = VT_BSTR;
  value.bstrVal = SysAllocString(characters);
  return value;
}

TEST(VariantHolder, OwnsTheContentOfItsVariant) {
  const Balance balance;
  VariantHolder holder;
  *holder.put() = text(L"x");
  VariantHolder second = std::move(holder);
  EXPECT_STREQ(L"x", second.get().bstrVal);
  VariantHolder third;
  third.attach(text(L"y"));
  second = std::move(third);
  EXPECT_STREQ(L"y", second.get().bstrVal);
  VARIANT detached = second.detach();
  EXPECT_EQ(VT_EMPTY, second.get().vt);
  VariantClear(&detached);
}

TEST(VariantHolder, DoesNotTroubleTheHostWithAnEmptyOne) {
  toys::ToyHost host;
  {
    const VariantHolder untouched;
    VariantHolder detached;
    detached.attach(text(L"x"));
    VARIANT value = detached.detach();
    EXPECT_EQ(0, host.log.count("VariantClear"));
    VariantClear(&value);
  }
  EXPECT_EQ(1, host.log.count("VariantClear"));
}

#ifndef NDEBUG
TEST(VariantHolderDeathTest, RefusesASecondValueWhileItIsFull) {
  VariantHolder holder;
  holder.attach(text(L"x"));
  EXPECT_DEATH(static_cast<void>(holder.put()), "VT_EMPTY");
  EXPECT_DEATH(holder.attach(VARIANT{}), "VT_EMPTY");
}
#endif

}  // namespace
}  // namespace velt::holders
