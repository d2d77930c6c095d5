#include "host/com/Variant.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <variant>
#include <vector>

#include "embedded/com/VariantTypes.h"
#include "embedded/platform/Allocation.h"
#include "tests/embedded/com/Balance.h"
#include "tests/embedded/com/Probe.h"
#include "tests/support/Variants.h"

namespace velt::com {
namespace {

using namespace variants;
using platform::AllocationFault;
using platform::Heap;

TEST(Variant, InitSetsTheTagAndNothingElse) {
  VARIANT variant = i4(7);
  variant.wReserved1 = 9;
  VariantInit(&variant);
  EXPECT_EQ(VT_EMPTY, variant.vt);
  EXPECT_EQ(7, variant.lVal);
  EXPECT_EQ(9, variant.wReserved1);
  VariantInit(nullptr);
}

TEST(Variant, ClearFreesAString) {
  const Balance balance;
  VARIANT variant = ownedText(L"x");
  EXPECT_EQ(S_OK, VariantClear(&variant));
  EXPECT_EQ(VT_EMPTY, variant.vt);
  EXPECT_EQ(S_OK, VariantClear(&variant));
}

TEST(Variant, ClearReleasesAnInterface) {
  const Balance balance;
  VARIANT variant = borrowed(Probe::make());
  EXPECT_EQ(S_OK, VariantClear(&variant));
  variant.vt = VT_DISPATCH;
  variant.pdispVal = DispatchProbe::make();
  EXPECT_EQ(S_OK, VariantClear(&variant));
  EXPECT_EQ(VT_EMPTY, variant.vt);
}

// Clears the variant that holds it once more when it is released, as an owner does that ends with it.
struct LastOwner final : IUnknown {
  HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG AddRef() override { return 2; }
  ULONG Release() override {
    ++releases;
    if (releases == 1) VariantClear(holder);
    return 0;
  }
  VARIANT* holder = nullptr;
  int releases = 0;
};

TEST(Variant, IsEmptyBeforeWhatItHeldIsReleased) {
  LastOwner object;
  VARIANT variant{};
  variant.vt = VT_UNKNOWN;
  variant.punkVal = &object;
  object.holder = &variant;
  EXPECT_EQ(S_OK, VariantClear(&variant));
  EXPECT_EQ(1, object.releases);
}

TEST(Variant, ClearDestroysAnArrayWithItsElements) {
  const Balance balance;
  VARIANT variant = borrowed(SafeArrayCreateVector(VT_BSTR, 0, 2));
  BSTR text = SysAllocString(L"x");
  const LONG index = 1;
  ASSERT_EQ(S_OK, SafeArrayPutElement(variant.parray, &index, text));
  SysFreeString(text);
  EXPECT_EQ(S_OK, VariantClear(&variant));
  EXPECT_EQ(VT_EMPTY, variant.vt);
}

TEST(Variant, ClearTakesNullForAnythingThatIsOwned) {
  for (const VARTYPE type : {VT_BSTR, VT_UNKNOWN, VT_DISPATCH}) {
    VARIANT variant{};
    variant.vt = type;
    EXPECT_EQ(S_OK, VariantClear(&variant)) << type;
    EXPECT_EQ(VT_EMPTY, variant.vt);
  }
  VARIANT variant{};
  variant.vt = VT_ARRAY | VT_I4;
  EXPECT_EQ(S_OK, VariantClear(&variant));
}

TEST(Variant, ClearLeavesWhatAReferenceRefersTo) {
  const Balance balance;
  VARIANT owner = ownedText(L"x");
  VARIANT reference{};
  reference.vt = VT_BSTR | VT_BYREF;
  reference.byref = &owner.bstrVal;
  EXPECT_EQ(S_OK, VariantClear(&reference));
  EXPECT_EQ(VT_EMPTY, reference.vt);
  EXPECT_STREQ(L"x", owner.bstrVal);
  reference.vt = VT_VARIANT | VT_BYREF;
  reference.pvarVal = &owner;
  EXPECT_EQ(S_OK, VariantClear(&reference));
  VariantClear(&owner);

  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 1);
  reference.vt = VT_ARRAY | VT_I4 | VT_BYREF;
  reference.byref = &array;
  EXPECT_EQ(S_OK, VariantClear(&reference));
  EXPECT_EQ(S_OK, SafeArrayDestroy(array));
}

TEST(Variant, ClearRefusesALockedArrayAndKeepsIt) {
  const Balance balance;
  VARIANT variant = borrowed(SafeArrayCreateVector(VT_I4, 0, 1));
  void* data = nullptr;
  ASSERT_EQ(S_OK, SafeArrayAccessData(variant.parray, &data));
  EXPECT_EQ(DISP_E_ARRAYISLOCKED, VariantClear(&variant));
  EXPECT_EQ(VT_ARRAY | VT_I4, variant.vt);
  ASSERT_EQ(S_OK, SafeArrayUnaccessData(variant.parray));
  EXPECT_EQ(S_OK, VariantClear(&variant));
}

TEST(Variant, ClearAndCopyRefuseATagThatMeansNothingAndFollowNoPointer) {
  const VARTYPE tags[] = {
      15,        VT_VARIANT,         VT_VOID, VT_HRESULT,     VT_PTR,           VT_USERDEFINED,
      VT_LPWSTR, VT_RECORD,          0x0FFF,  0x1000 | VT_I4, 0x8000 | VT_BSTR, VT_BYREF,
      VT_ARRAY,  VT_ARRAY | VT_NULL, 0xFFFF};
  for (const VARTYPE tag : tags) {
    VARIANT variant{};
    variant.vt = tag;
    variant.ullVal = 0xDEADBEEF;
    VARIANT copy = i4(1);
    EXPECT_EQ(badVariantType, VariantCopy(&copy, &variant)) << tag;
    EXPECT_EQ(1, copy.lVal);
    EXPECT_EQ(badVariantType, VariantClear(&variant)) << tag;
    EXPECT_EQ(tag, variant.vt);
  }
}

TEST(Variant, NullArgumentsAreRefused) {
  VARIANT variant = i4(1);
  EXPECT_EQ(E_INVALIDARG, VariantClear(nullptr));
  EXPECT_EQ(E_INVALIDARG, VariantCopy(nullptr, &variant));
  EXPECT_EQ(E_INVALIDARG, VariantCopy(&variant, nullptr));
  EXPECT_EQ(1, variant.lVal);
}

TEST(Variant, ACopyIsASecondOwner) {
  const Balance balance;
  VARIANT original = ownedText(std::wstring(L"a\0b", 3));
  VARIANT copy{};
  ASSERT_EQ(S_OK, VariantCopy(&copy, &original));
  EXPECT_NE(original.bstrVal, copy.bstrVal);
  VariantClear(&original);
  EXPECT_EQ(std::wstring(L"a\0b", 3), std::wstring(copy.bstrVal, SysStringLen(copy.bstrVal)));
  VariantClear(&copy);
}

TEST(Variant, ACopyOfAnInterfaceAddsAReference) {
  const Balance balance;
  VARIANT original = borrowed(Probe::make());
  VARIANT copy{};
  ASSERT_EQ(S_OK, VariantCopy(&copy, &original));
  EXPECT_EQ(2U, referencesOf(original.punkVal));
  VariantClear(&copy);
  EXPECT_EQ(1U, referencesOf(original.punkVal));
  VariantClear(&original);
}

TEST(Variant, ACopyOfAReferenceSharesTheTarget) {
  LONG target = 5;
  VARIANT original{};
  original.vt = VT_I4 | VT_BYREF;
  original.byref = &target;
  VARIANT copy{};
  ASSERT_EQ(S_OK, VariantCopy(&copy, &original));
  EXPECT_EQ(&target, copy.byref);

  SAFEARRAY* array = nullptr;
  original.vt = VT_ARRAY | VT_I4 | VT_BYREF;
  original.byref = &array;
  ASSERT_EQ(S_OK, VariantCopy(&copy, &original));
  EXPECT_EQ(&array, copy.byref);
}

TEST(Variant, CopyingOverAValueFreesIt) {
  const Balance balance;
  VARIANT copy = ownedText(L"old");
  const VARIANT original = i4(3);
  EXPECT_EQ(S_OK, VariantCopy(&copy, &original));
  EXPECT_EQ(3, copy.lVal);
}

TEST(Variant, CopyingOntoItselfChangesNothing) {
  const Balance balance;
  VARIANT variant = ownedText(L"x");
  BSTR held = variant.bstrVal;
  EXPECT_EQ(S_OK, VariantCopy(&variant, &variant));
  EXPECT_EQ(held, variant.bstrVal);
  VariantClear(&variant);
}

TEST(Variant, AnElementMayBeCopiedOverTheArrayThatHoldsIt) {
  const Balance balance;
  VARIANT variant = borrowed(SafeArrayCreateVector(VT_VARIANT, 0, 1));
  VARIANT* elements = nullptr;
  ASSERT_EQ(S_OK, SafeArrayAccessData(variant.parray, reinterpret_cast<void**>(&elements)));
  elements[0] = ownedText(L"inner");
  ASSERT_EQ(S_OK, SafeArrayUnaccessData(variant.parray));
  ASSERT_EQ(S_OK, VariantCopy(&variant, elements));
  ASSERT_EQ(VT_BSTR, variant.vt);
  EXPECT_STREQ(L"inner", variant.bstrVal);
  VariantClear(&variant);
}

TEST(Variant, ACopyThatCannotReplaceALockedArrayLeavesBothAsTheyWere) {
  const Balance balance;
  VARIANT destination = borrowed(SafeArrayCreateVector(VT_I4, 0, 1));
  void* data = nullptr;
  ASSERT_EQ(S_OK, SafeArrayAccessData(destination.parray, &data));
  VARIANT source = ownedText(L"x");
  EXPECT_EQ(DISP_E_ARRAYISLOCKED, VariantCopy(&destination, &source));
  EXPECT_EQ(VT_ARRAY | VT_I4, destination.vt);
  SafeArrayUnaccessData(destination.parray);
  VariantClear(&destination);
  VariantClear(&source);
}

TEST(Variant, CopyingAnArrayThatContainsItselfFails) {
  const Balance balance;
  VARIANT variant = borrowed(SafeArrayCreateVector(VT_VARIANT, 0, 1));
  VARIANT* elements = nullptr;
  ASSERT_EQ(S_OK, SafeArrayAccessData(variant.parray, reinterpret_cast<void**>(&elements)));
  elements[0] = variant;
  SafeArrayUnaccessData(variant.parray);
  VARIANT copy{};
  EXPECT_EQ(E_INVALIDARG, VariantCopy(&copy, &variant));
  EXPECT_EQ(VT_EMPTY, copy.vt);
  EXPECT_EQ(S_OK, VariantClear(&variant)) << "and it can be destroyed";
}

TEST(Variant, ACopyWithoutMemoryFailsAndLeavesTheDestination) {
  const Balance balance;
  VARIANT original = borrowed(SafeArrayCreateVector(VT_VARIANT, 0, 3));
  for (LONG i = 0; i < 3; ++i) {
    VARIANT element = ownedText(std::to_wstring(i));
    ASSERT_EQ(S_OK, SafeArrayPutElement(original.parray, &i, &element));
    VariantClear(&element);
  }
  VARIANT destination = ownedText(L"kept");
  std::uint64_t failed = 0;
  for (HRESULT result = E_OUTOFMEMORY; result != S_OK;) {
    const Balance step;
    VARIANT copy = destination;
    {
      const AllocationFault fault = AllocationFault::failNth(failed + 1);
      result = VariantCopy(&copy, &original);
    }
    if (result == S_OK) {
      VariantClear(&copy);
      destination = ownedText(L"kept");
    } else {
      ASSERT_EQ(E_OUTOFMEMORY, result);
      ASSERT_EQ(VT_BSTR, copy.vt);
      ASSERT_STREQ(L"kept", copy.bstrVal);
      ++failed;
    }
  }
  EXPECT_EQ(5U, failed) << "the array, its elements, and three strings";
  VariantClear(&destination);
  VariantClear(&original);
}

TEST(VariantTypes, KnowTheSizeOfEveryElementThatAnArrayCanHold) {
  EXPECT_EQ(sizeof(VARIANT), elementSize(VT_VARIANT));
  EXPECT_EQ(sizeof(BSTR), elementSize(VT_BSTR));
  EXPECT_EQ(2U, elementSize(VT_BOOL));
  EXPECT_EQ(4U, elementSize(VT_INT));
  EXPECT_EQ(8U, elementSize(VT_DATE));
  EXPECT_EQ(16U, elementSize(VT_DECIMAL));
  for (const VARTYPE none : {VT_EMPTY, VT_NULL, VT_VOID, VT_RECORD, VT_PTR})
    EXPECT_EQ(0U, elementSize(none));
  EXPECT_EQ(0U, elementSize(VT_I4 | VT_ARRAY));
}

// --- against a model: a value is nothing, a number, a text, an object or a list of values ----------------------------

struct Model;
using Models = std::vector<Model>;
struct Model {
  std::variant<std::monostate, LONG, double, std::wstring, Models> value;
  bool operator==(const Model&) const = default;
};

void showValue(const Model& model, std::ostream& out) {
  out << "value of kind " << model.value.index();
}

rc::Gen<Model> models(int depth) {
  auto nothing = rc::gen::just(Model{});
  auto number = rc::gen::map(rc::gen::arbitrary<LONG>(), [](LONG value) { return Model{value}; });
  auto real = rc::gen::map(rc::gen::arbitrary<double>(), [](double value) { return Model{value}; });
  auto text = rc::gen::map(rc::gen::container<std::wstring>(rc::gen::inRange<wchar_t>(0, 0x300)),
                           [](const std::wstring& value) { return Model{value}; });
  if (depth == 0) return rc::gen::oneOf(nothing, number, real, text);
  auto list = rc::gen::map(rc::gen::container<Models>(rc::gen::lazy([depth] { return models(depth - 1); })),
                           [](Models value) { return Model{std::move(value)}; });
  return rc::gen::oneOf(nothing, number, real, text, list);
}

VARIANT build(const Model& model) {
  if (const auto* number = std::get_if<LONG>(&model.value)) return i4(*number);
  if (const auto* text = std::get_if<std::wstring>(&model.value)) return ownedText(*text);
  VARIANT variant{};
  if (const auto* real = std::get_if<double>(&model.value)) {
    variant.vt = VT_R8;
    variant.dblVal = *real;
  } else if (const auto* list = std::get_if<Models>(&model.value)) {
    variant = borrowed(SafeArrayCreateVector(VT_VARIANT, -3, static_cast<ULONG>(list->size())));
    LONG index = -3;
    for (const Model& element : *list) {
      VARIANT built = build(element);
      RC_ASSERT(SafeArrayPutElement(variant.parray, &index, &built) == S_OK);
      VariantClear(&built);
      ++index;
    }
  }
  return variant;
}

Model read(const VARIANT& variant) {
  switch (variant.vt) {
    case VT_I4:
      return {variant.lVal};
    case VT_R8:
      return {variant.dblVal};
    case VT_BSTR:
      return {std::wstring(variant.bstrVal, SysStringLen(variant.bstrVal))};
    case VT_ARRAY | VT_VARIANT: {
      Models elements;
      LONG lower = 0;
      LONG upper = 0;
      RC_ASSERT(SafeArrayGetLBound(variant.parray, 1, &lower) == S_OK);
      RC_ASSERT(SafeArrayGetUBound(variant.parray, 1, &upper) == S_OK);
      for (LONG index = lower; index <= upper; ++index) {
        VARIANT element;
        RC_ASSERT(SafeArrayGetElement(variant.parray, &index, &element) == S_OK);
        elements.push_back(read(element));
        VariantClear(&element);
      }
      return {elements};
    }
    default:
      RC_ASSERT(variant.vt == VT_EMPTY);
      return {};
  }
}

RC_GTEST_PROP(Variant, ACopyEqualsTheModelAfterTheOriginalIsGone, ()) {
  const Model model = *models(3);
  const auto before = platform::Ledger::snapshot();
  VARIANT original = build(model);
  VARIANT copy = build(*models(1));
  RC_ASSERT(VariantCopy(&copy, &original) == S_OK);
  RC_ASSERT(VariantClear(&original) == S_OK);
  RC_ASSERT(read(copy) == model);
  RC_ASSERT(VariantClear(&copy) == S_OK);
  RC_ASSERT(platform::Ledger::difference(before, platform::Ledger::snapshot()).empty());
}

RC_GTEST_PROP(Variant, ACopyThatFailsAtAnyAllocationLeaksNothing, ()) {
  const Model model = *models(2);
  VARIANT original = build(model);
  const auto before = platform::Ledger::snapshot();
  HRESULT result = E_OUTOFMEMORY;
  for (std::uint64_t n = 1; result != S_OK; ++n) {
    VARIANT copy{};
    {
      const AllocationFault fault = AllocationFault::failNth(n, Heap::All);
      result = VariantCopy(&copy, &original);
    }
    if (result == S_OK) RC_ASSERT(read(copy) == model);
    RC_ASSERT(result == S_OK || (result == E_OUTOFMEMORY && copy.vt == VT_EMPTY));
    VariantClear(&copy);
    RC_ASSERT(platform::Ledger::difference(before, platform::Ledger::snapshot()).empty());
  }
  VariantClear(&original);
}

}  // namespace
}  // namespace velt::com
