#include "host/com/OleSafeArray.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "embedded/platform/Allocation.h"
#include "host/com/ComError.h"
#include "tests/embedded/com/Balance.h"
#include "tests/embedded/com/Probe.h"
#include "tests/support/Variants.h"

namespace velt::com {
namespace {

using platform::AllocationFault;
using platform::Heap;

HRESULT raisedBy(const std::function<void()>& action) {
  try {
    action();
  } catch (const _com_error& error) {
    return error.Error();
  }
  return S_OK;
}

LONG lowerBoundOf(const COleSafeArray& array) {
  LONG bound = 0;
  EXPECT_EQ(S_OK, SafeArrayGetLBound(array.parray, 1, &bound));
  return bound;
}

LONG upperBoundOf(const COleSafeArray& array) {
  LONG bound = 0;
  EXPECT_EQ(S_OK, SafeArrayGetUBound(array.parray, 1, &bound));
  return bound;
}

TEST(OleSafeArray, IsEmptyUntilAnArrayIsCreated) {
  COleSafeArray array;
  EXPECT_EQ(VT_EMPTY, array.vt);
  array.Clear();
  EXPECT_EQ(VT_EMPTY, array.vt);
}

TEST(OleSafeArray, CreatesZeroedElementsFromTheLowerBoundOn) {
  const Balance balance;
  COleSafeArray array;
  array.CreateOneDim(VT_I4, 3, nullptr, 5);
  EXPECT_EQ(VT_ARRAY | VT_I4, array.vt);
  EXPECT_EQ(5, lowerBoundOf(array));
  EXPECT_EQ(7, upperBoundOf(array));
  const LONG index = 7;
  LONG value = 1;
  array.GetElement(&index, &value);
  EXPECT_EQ(0, value);
}

TEST(OleSafeArray, CopiesElementsFromASource) {
  const Balance balance;
  const double source[] = {1.5, 2.5};
  COleSafeArray array;
  array.CreateOneDim(VT_R8, 2, source);
  const LONG index = 1;
  double value = 0;
  array.GetElement(&index, &value);
  EXPECT_EQ(2.5, value);
}

TEST(OleSafeArray, ASourceKeepsWhatItOwns) {
  const Balance balance;
  BSTR strings[] = {SysAllocString(L"a"), nullptr};
  IUnknown* objects[] = {Probe::make()};
  {
    COleSafeArray texts;
    texts.CreateOneDim(VT_BSTR, 2, static_cast<const void*>(strings));
    COleSafeArray references;
    references.CreateOneDim(VT_UNKNOWN, 1, static_cast<const void*>(objects));
    EXPECT_EQ(2U, referencesOf(objects[0]));
  }
  EXPECT_STREQ(L"a", strings[0]);
  SysFreeString(strings[0]);
  EXPECT_EQ(0U, objects[0]->Release());
}

TEST(OleSafeArray, PutsAndGetsStringsAndInterfacesAsTheyAre) {
  const Balance balance;
  COleSafeArray array;
  array.CreateOneDim(VT_UNKNOWN, 1);
  const LONG index = 0;
  IUnknown* object = Probe::make();
  array.PutElement(&index, object);
  object->Release();
  IUnknown* got = nullptr;
  array.GetElement(&index, &got);
  EXPECT_EQ(object, got);
  got->Release();
}

TEST(OleSafeArray, CreatingAgainClearsWhatWasHeld) {
  const Balance balance;
  COleSafeArray array;
  array.CreateOneDim(VT_BSTR, 4);
  array.CreateOneDim(VT_I2, 0);
  EXPECT_EQ(VT_ARRAY | VT_I2, array.vt);
  EXPECT_EQ(-1, upperBoundOf(array));
}

TEST(OleSafeArray, AttachTakesTheArrayOver) {
  const Balance balance;
  VARIANT variant = variants::borrowed(SafeArrayCreateVector(VT_I4, 0, 1));
  SAFEARRAY* expected = variant.parray;
  COleSafeArray array;
  array.CreateOneDim(VT_BSTR, 1);
  array.Attach(variant);
  EXPECT_EQ(VT_EMPTY, variant.vt);
  EXPECT_EQ(expected, array.parray);
  array.Attach(array);
  EXPECT_EQ(expected, array.parray) << "itself again";
  EXPECT_EQ(VT_ARRAY | VT_I4, array.vt);
}

TEST(OleSafeArray, DetachGivesTheArrayUp) {
  const Balance balance;
  COleSafeArray array;
  array.CreateOneDim(VT_I4, 1);
  VARIANT detached = array.Detach();
  EXPECT_EQ(VT_EMPTY, array.vt);
  EXPECT_EQ(VT_ARRAY | VT_I4, detached.vt);
  EXPECT_EQ(S_OK, VariantClear(&detached));
  EXPECT_EQ(VT_EMPTY, array.Detach().vt);
}

TEST(OleSafeArray, AttachRaisesForAnythingButAnArrayOfItsOwn) {
  const Balance balance;
  COleSafeArray array;
  array.CreateOneDim(VT_I4, 1);
  SAFEARRAY* held = array.parray;
  for (const int type : {int{VT_EMPTY}, int{VT_I4}, VT_ARRAY | VT_I4, VT_ARRAY | VT_I4 | VT_BYREF}) {
    VARIANT variant = variants::ofType(static_cast<VARTYPE>(type));
    if ((type & VT_BYREF) != 0) variant.byref = &held;
    EXPECT_EQ(E_INVALIDARG, raisedBy([&] { array.Attach(variant); })) << type;
    EXPECT_EQ(type, variant.vt);
  }
  EXPECT_EQ(held, array.parray);
}

TEST(OleSafeArray, RaisesForElementsThatAreNotThere) {
  const Balance balance;
  COleSafeArray array;
  LONG index = 0;
  LONG value = 0;
  EXPECT_EQ(E_INVALIDARG, raisedBy([&] { array.GetElement(&index, &value); })) << "no array yet";
  EXPECT_EQ(E_INVALIDARG, raisedBy([&] { array.PutElement(&index, &value); }));
  array.CreateOneDim(VT_I4, 1);
  index = 1;
  EXPECT_EQ(DISP_E_BADINDEX, raisedBy([&] { array.GetElement(&index, &value); }));
  EXPECT_EQ(DISP_E_BADINDEX, raisedBy([&] { array.PutElement(&index, &value); }));
  EXPECT_EQ(E_INVALIDARG, raisedBy([&] { array.PutElement(nullptr, &value); }));
  index = 0;
  EXPECT_EQ(E_INVALIDARG, raisedBy([&] { array.PutElement(&index, nullptr); }));
}

TEST(OleSafeArray, RaisesForAnArrayThatCannotBe) {
  const Balance balance;
  COleSafeArray array;
  EXPECT_EQ(E_INVALIDARG, raisedBy([&] { array.CreateOneDim(VT_EMPTY, 1); }));
  EXPECT_EQ(E_INVALIDARG,
            raisedBy([&] { array.CreateOneDim(VT_I4, 2, nullptr, std::numeric_limits<LONG>::max()); }));
  EXPECT_EQ(E_INVALIDARG,
            raisedBy([&] { array.CreateOneDim(VT_I4, 0, nullptr, std::numeric_limits<LONG>::min()); }));
  EXPECT_EQ(VT_EMPTY, array.vt);
}

TEST(OleSafeArray, RaisesWhenMemoryIsExhaustedAndHoldsNothing) {
  const Balance balance;
  BSTR source[] = {SysAllocString(L"a"), SysAllocString(L"b")};
  COleSafeArray array;
  for (std::uint64_t n = 1; n <= 4; ++n) {
    const Balance step;
    const AllocationFault fault = AllocationFault::failNth(n, Heap::Arrays | Heap::Strings);
    HRESULT raised = S_OK;
    try {
      array.CreateOneDim(VT_BSTR, 2, static_cast<const void*>(source));
    } catch (const _com_error& error) {
      raised = error.Error();
    }
    EXPECT_EQ(E_OUTOFMEMORY, raised) << n;
    EXPECT_EQ(VT_EMPTY, array.vt) << n;
  }
  for (BSTR string : source)
    SysFreeString(string);
}

TEST(OleSafeArray, KeepsALockedArrayRatherThanFreeItUnderItsUser) {
  const Balance balance;
  COleSafeArray array;
  array.CreateOneDim(VT_I4, 1);
  void* data = nullptr;
  ASSERT_EQ(S_OK, SafeArrayAccessData(array.parray, &data));
  array.Clear();
  EXPECT_EQ(VT_ARRAY | VT_I4, array.vt);
  EXPECT_EQ(DISP_E_ARRAYISLOCKED, raisedBy([&] { array.CreateOneDim(VT_I4, 1); }));
  ASSERT_EQ(S_OK, SafeArrayUnaccessData(array.parray));
}

}  // namespace
}  // namespace velt::com
