#include <gtest/gtest.h>

#include <utility>

#include "embedded/com/InterfaceHolder.h"
#include "embedded/com/StringHolder.h"
#include "embedded/com/VariantHolder.h"
#include "tests/embedded/com/Balance.h"
#include "tests/embedded/com/Probe.h"

namespace velt::com {
namespace {

TEST(InterfaceHolder, GivesItsReferenceBackAtTheEndOfTheScope) {
  const Balance balance;
  auto holder = InterfaceHolder<IUnknown>::owning(Probe::make());
  EXPECT_EQ(1U, referencesOf(holder.get()));
  auto second = InterfaceHolder<IUnknown>::sharing(holder.get());
  EXPECT_EQ(2U, referencesOf(holder.get()));
  second.reset();
  EXPECT_FALSE(second);
  EXPECT_EQ(1U, referencesOf(holder.get()));
}

TEST(InterfaceHolder, IsFilledThroughAnOutParameterAndEmptiedByDetaching) {
  const Balance balance;
  auto object = InterfaceHolder<IUnknown>::owning(Probe::make());
  InterfaceHolder<IPropertySource> source;
  ASSERT_EQ(S_OK, object->QueryInterface(IID_IPropertySource, reinterpret_cast<void**>(source.put())));
  IPropertySource* detached = source.detach();
  EXPECT_FALSE(source);
  EXPECT_EQ(2U, referencesOf(detached));
  source.attach(detached);
}

TEST(InterfaceHolder, MovesWithoutCounting) {
  const Balance balance;
  auto first = InterfaceHolder<IUnknown>::owning(Probe::make());
  InterfaceHolder<IUnknown> second = std::move(first);
  EXPECT_EQ(1U, referencesOf(second.get()));
  auto third = InterfaceHolder<IUnknown>::owning(Probe::make());
  third = std::move(second);
  EXPECT_EQ(1U, referencesOf(third.get()));
}

TEST(StringHolder, OwnsItsStringAndShowsAllOfIt) {
  const Balance balance;
  StringHolder holder(std::wstring_view(L"a\0b", 3));
  EXPECT_EQ(std::wstring_view(L"a\0b", 3), holder.view());
  holder = StringHolder(L"other");
  EXPECT_EQ(L"other", holder.view());
  BSTR detached = holder.detach();
  EXPECT_TRUE(holder.isNull());
  EXPECT_TRUE(holder.view().empty());
  *holder.put() = detached;
  EXPECT_EQ(L"other", holder.view());
}

TEST(VariantHolder, OwnsTheContentOfItsVariant) {
  const Balance balance;
  VariantHolder holder;
  holder.put()->vt = VT_BSTR;
  holder.get().bstrVal = SysAllocString(L"x");
  VariantHolder second = std::move(holder);
  EXPECT_EQ(VT_EMPTY, holder.get().vt);
  EXPECT_EQ(VT_BSTR, second.get().vt);
  VARIANT other{};
  other.vt = VT_BSTR;
  other.bstrVal = SysAllocString(L"y");
  second.attach(other);
  EXPECT_STREQ(L"y", second.get().bstrVal);
  VARIANT detached = second.detach();
  VariantClear(&detached);
}

}  // namespace
}  // namespace velt::com
