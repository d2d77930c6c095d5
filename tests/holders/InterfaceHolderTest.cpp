#include "holders/InterfaceHolder.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/embedded/com/Balance.h"
#include "tests/embedded/com/Probe.h"

namespace velt::holders {
namespace {

using com::Balance;
using com::Probe;
using com::referencesOf;

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

TEST(InterfaceHolder, MovesWithoutCountingAndGivesBackWhatTheTargetHeld) {
  const Balance balance;
  auto first = InterfaceHolder<IUnknown>::owning(Probe::make());
  InterfaceHolder<IUnknown> second = std::move(first);
  EXPECT_EQ(1U, referencesOf(second.get()));
  auto third = InterfaceHolder<IUnknown>::owning(Probe::make());
  third = std::move(second);
  EXPECT_EQ(1U, referencesOf(third.get()));
}

#ifndef NDEBUG
TEST(InterfaceHolderDeathTest, RefusesToTakeASecondReferenceWhileItIsFull) {
  auto holder = InterfaceHolder<IUnknown>::owning(Probe::make());
  EXPECT_DEATH(static_cast<void>(holder.put()), "held_ == nullptr");
  EXPECT_DEATH(holder.attach(holder.get()), "held_ == nullptr");
}
#endif

TEST(InterfaceQuery, TakesAnInterfaceOverFromASuccessOnly) {
  const Balance balance;
  const auto object = InterfaceHolder<IUnknown>::owning(Probe::make());
  InterfaceHolder<IPropertySource> source;
  EXPECT_EQ(S_OK, query(object.get(), IID_IPropertySource, source));
  EXPECT_EQ(2U, referencesOf(object.get()));
  InterfaceHolder<IPropertySource> none;
  EXPECT_EQ(E_NOINTERFACE, query(object.get(), IID_IDispatch, none));
  EXPECT_EQ(E_NOINTERFACE, query(nullptr, IID_IPropertySource, none));
  EXPECT_FALSE(none);
}

// Answers every query with one result and one pointer.
struct Liar : IUnknown {
  Liar(HRESULT result, void* pointer) : result_(result), pointer_(pointer) {}
  HRESULT QueryInterface(REFIID, void** object) override {
    *object = pointer_;
    return result_;
  }
  ULONG AddRef() override { return 1; }
  ULONG Release() override { return 1; }

 private:
  HRESULT result_;
  void* pointer_;
};

TEST(InterfaceQuery, LeavesAloneWhatAFailureLeftBehind) {
  Liar liar(E_ACCESSDENIED, reinterpret_cast<void*>(1));
  InterfaceHolder<IUnknown> none;
  EXPECT_EQ(E_ACCESSDENIED, query(&liar, IID_IUnknown, none));
  EXPECT_FALSE(none);
}

TEST(InterfaceQuery, ASuccessWithoutAnInterfaceIsAFailureOfItsOwn) {
  Liar liar(S_OK, nullptr);
  InterfaceHolder<IUnknown> none;
  EXPECT_EQ(E_POINTER, query(&liar, IID_IUnknown, none));
}

}  // namespace
}  // namespace velt::holders
