#include "host/com/SafeArray.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "embedded/platform/Allocation.h"
#include "host/com/Variant.h"
#include "tests/embedded/com/Balance.h"
#include "tests/embedded/com/Probe.h"
#include "tests/support/Variants.h"

namespace velt::com {
namespace {

using platform::AllocationFault;
using platform::Heap;

constexpr LONG lowest = std::numeric_limits<LONG>::min();
constexpr LONG highest = std::numeric_limits<LONG>::max();

TEST(SafeArray, AVectorKnowsItsBoundsItsTypeAndItsLayout) {
  const Balance balance;
  SAFEARRAY* array = SafeArrayCreateVector(VT_R8, -2, 5);
  ASSERT_NE(nullptr, array);
  LONG lower = 0;
  LONG upper = 0;
  VARTYPE type = VT_EMPTY;
  EXPECT_EQ(1U, SafeArrayGetDim(array));
  EXPECT_EQ(S_OK, SafeArrayGetLBound(array, 1, &lower));
  EXPECT_EQ(S_OK, SafeArrayGetUBound(array, 1, &upper));
  EXPECT_EQ(S_OK, SafeArrayGetVartype(array, &type));
  EXPECT_EQ(-2, lower);
  EXPECT_EQ(2, upper);
  EXPECT_EQ(VT_R8, type);
  EXPECT_EQ(8U, array->cbElements);
  EXPECT_EQ(0U, array->cLocks);
  EXPECT_EQ(S_OK, SafeArrayDestroy(array));
}

TEST(SafeArray, FeaturesTellWhatTheElementsOwn) {
  const Balance balance;
  const std::map<VARTYPE, USHORT> expected{{VT_I4, 0},
                                           {VT_BSTR, FADF_BSTR},
                                           {VT_UNKNOWN, FADF_UNKNOWN},
                                           {VT_DISPATCH, FADF_DISPATCH},
                                           {VT_VARIANT, FADF_VARIANT}};
  for (const auto& [type, feature] : expected) {
    SAFEARRAY* array = SafeArrayCreateVector(type, 0, 1);
    EXPECT_EQ(feature | FADF_HAVEVARTYPE, array->fFeatures) << type;
    SafeArrayDestroy(array);
  }
}

TEST(SafeArray, ElementsAreZeroAtFirst) {
  const Balance balance;
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 3);
  for (LONG i = 0; i < 3; ++i) {
    VARIANT element = variants::ofType(VT_I4);
    EXPECT_EQ(S_OK, SafeArrayGetElement(array, &i, &element));
    EXPECT_EQ(VT_EMPTY, element.vt);
  }
  SafeArrayDestroy(array);
}

TEST(SafeArray, StoresTheLastDimensionFirst) {
  const Balance balance;
  const SAFEARRAYBOUND bounds[] = {{2, 10}, {3, 20}, {4, 30}};
  SAFEARRAY* array = SafeArrayCreate(VT_I4, 3, bounds);
  ASSERT_NE(nullptr, array);
  EXPECT_EQ(4U, (&array->rgsabound[0])[0].cElements);
  EXPECT_EQ(3U, (&array->rgsabound[0])[1].cElements);
  EXPECT_EQ(2U, (&array->rgsabound[0])[2].cElements);
  for (UINT dimension = 1; dimension <= 3; ++dimension) {
    LONG lower = 0;
    EXPECT_EQ(S_OK, SafeArrayGetLBound(array, dimension, &lower));
    EXPECT_EQ(static_cast<LONG>(10 * dimension), lower);
  }
  SafeArrayDestroy(array);
}

TEST(SafeArray, TheFirstDimensionVariesFastestInMemory) {
  const Balance balance;
  const SAFEARRAYBOUND bounds[] = {{2, 0}, {3, 0}};
  SAFEARRAY* array = SafeArrayCreate(VT_I4, 2, bounds);
  for (LONG column = 0; column < 3; ++column) {
    for (LONG row = 0; row < 2; ++row) {
      const LONG indices[] = {row, column};
      LONG value = 10 * column + row;
      ASSERT_EQ(S_OK, SafeArrayPutElement(array, indices, &value));
    }
  }
  LONG* data = nullptr;
  ASSERT_EQ(S_OK, SafeArrayAccessData(array, reinterpret_cast<void**>(&data)));
  EXPECT_EQ((std::vector<LONG>{0, 1, 10, 11, 20, 21}), std::vector<LONG>(data, data + 6));
  SafeArrayUnaccessData(array);
  SafeArrayDestroy(array);
}

TEST(SafeArray, NoArrayComesOfNonsense) {
  const Balance balance;
  const SAFEARRAYBOUND bound{1, 0};
  EXPECT_EQ(nullptr, SafeArrayCreate(VT_I4, 0, &bound)) << "no dimensions";
  const std::vector<SAFEARRAYBOUND> many(65536, bound);
  EXPECT_EQ(nullptr, SafeArrayCreate(VT_I4, 65536, many.data())) << "more dimensions than can be counted";
  EXPECT_EQ(nullptr, SafeArrayCreate(VT_I4, 1, nullptr));
  for (const VARTYPE type : {VT_EMPTY, VT_NULL, VT_VOID, VT_RECORD, VT_PTR, VT_USERDEFINED}) {
    EXPECT_EQ(nullptr, SafeArrayCreateVector(type, 0, 1)) << type;
  }
  EXPECT_EQ(nullptr, SafeArrayCreateVector(VT_I4 | VT_BYREF, 0, 1));
  EXPECT_EQ(nullptr, SafeArrayCreateVector(VT_I4 | VT_ARRAY, 0, 1));
}

TEST(SafeArray, AnUpperBoundThatDoesNotFitIsRefused) {
  const Balance balance;
  EXPECT_EQ(nullptr, SafeArrayCreateVector(VT_UI1, highest, 2));
  EXPECT_EQ(nullptr, SafeArrayCreateVector(VT_UI1, 1, 0x80000000U));
  EXPECT_EQ(nullptr, SafeArrayCreateVector(VT_UI1, lowest, 0)) << "an upper bound below the lowest";
  SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, highest, 1);
  ASSERT_NE(nullptr, array);
  LONG upper = 0;
  EXPECT_EQ(S_OK, SafeArrayGetUBound(array, 1, &upper));
  EXPECT_EQ(highest, upper);
  SafeArrayDestroy(array);
}

TEST(SafeArray, ASizeThatNoAddressCanCountIsRefused) {
  const Balance balance;
  const SAFEARRAYBOUND overflowing[] = {{0x7FFFFFFF, 0}, {0x7FFFFFFF, 0}, {0x7FFFFFFF, 0}};
  EXPECT_EQ(nullptr, SafeArrayCreate(VT_UI1, 3, overflowing)) << "too many elements";
  const SAFEARRAYBOUND wrapping[] = {{0x7FFFFFFF, 0}, {0x7FFFFFFF, 0}};
  EXPECT_EQ(nullptr, SafeArrayCreate(VT_VARIANT, 2, wrapping)) << "too many bytes";
  const SAFEARRAYBOUND bytesToZero[] = {{0x40000000, 0}, {0x40000000, 0}, {2, 0}};
  EXPECT_EQ(nullptr, SafeArrayCreate(VT_VARIANT, 3, bytesToZero)) << "bytes that wrap to zero";
  const SAFEARRAYBOUND toZero[] = {{0x40000000, 0}, {0x40000000, 0}, {16, 0}};
  EXPECT_EQ(nullptr, SafeArrayCreate(VT_UI1, 3, toZero)) << "a product that wraps to zero";
}

TEST(SafeArray, ADimensionWithoutElementsIsAnArrayWithoutElements) {
  const Balance balance;
  const SAFEARRAYBOUND bounds[] = {{0, 5}, {0x7FFFFFFF, 0}, {0x7FFFFFFF, 0}, {0x7FFFFFFF, 0}};
  SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 4, bounds);
  ASSERT_NE(nullptr, array);
  LONG upper = 0;
  EXPECT_EQ(S_OK, SafeArrayGetUBound(array, 1, &upper));
  EXPECT_EQ(4, upper);
  const LONG indices[] = {5, 0, 0, 0};
  VARIANT element{};
  EXPECT_EQ(DISP_E_BADINDEX, SafeArrayGetElement(array, indices, &element));
  SAFEARRAY* copy = nullptr;
  EXPECT_EQ(S_OK, SafeArrayCopy(array, &copy));
  SafeArrayDestroy(copy);
  SafeArrayDestroy(array);
}

TEST(SafeArray, IndicesAndDimensionsAreCheckedExactly) {
  const Balance balance;
  const SAFEARRAYBOUND bounds[] = {{2, -1}, {3, 5}};
  SAFEARRAY* array = SafeArrayCreate(VT_I4, 2, bounds);
  LONG value = 1;
  for (const LONG first : {-2, -1, 0, 1, lowest, highest}) {
    for (const LONG second : {4, 5, 7, 8, lowest, highest}) {
      const LONG indices[] = {first, second};
      const bool inside = first >= -1 && first <= 0 && second >= 5 && second <= 7;
      const HRESULT expected = inside ? S_OK : DISP_E_BADINDEX;
      EXPECT_EQ(expected, SafeArrayPutElement(array, indices, &value)) << first << ' ' << second;
      EXPECT_EQ(expected, SafeArrayGetElement(array, indices, &value)) << first << ' ' << second;
    }
  }
  LONG bound = 77;
  for (const UINT dimension : {0U, 3U, 0xFFFFFFFFU}) {
    EXPECT_EQ(DISP_E_BADINDEX, SafeArrayGetLBound(array, dimension, &bound));
    EXPECT_EQ(DISP_E_BADINDEX, SafeArrayGetUBound(array, dimension, &bound));
  }
  EXPECT_EQ(77, bound);
  SafeArrayDestroy(array);
}

TEST(SafeArray, NullArgumentsAreRefused) {
  const Balance balance;
  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 1);
  SAFEARRAY* variants = SafeArrayCreateVector(VT_VARIANT, 0, 1);
  const LONG index = 0;
  LONG value = 0;
  VARTYPE type = VT_EMPTY;
  void* data = nullptr;
  SAFEARRAY* copy = array;
  EXPECT_EQ(S_OK, SafeArrayDestroy(nullptr));
  EXPECT_EQ(0U, SafeArrayGetDim(nullptr));
  EXPECT_EQ(E_INVALIDARG, SafeArrayCopy(array, nullptr));
  EXPECT_EQ(S_OK, SafeArrayCopy(nullptr, &copy));
  EXPECT_EQ(nullptr, copy) << "no array has no array for a copy";
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetVartype(nullptr, &type));
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetVartype(array, nullptr));
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetLBound(nullptr, 1, &value));
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetLBound(array, 1, nullptr));
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetUBound(nullptr, 1, &value));
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetUBound(array, 1, nullptr));
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetElement(nullptr, &index, &value));
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetElement(array, nullptr, &value));
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetElement(array, &index, nullptr));
  EXPECT_EQ(E_INVALIDARG, SafeArrayPutElement(nullptr, &index, &value));
  EXPECT_EQ(E_INVALIDARG, SafeArrayPutElement(array, nullptr, &value));
  EXPECT_EQ(E_INVALIDARG, SafeArrayPutElement(array, &index, nullptr));
  EXPECT_EQ(E_INVALIDARG, SafeArrayPutElement(variants, &index, nullptr));
  EXPECT_EQ(E_INVALIDARG, SafeArrayAccessData(nullptr, &data));
  EXPECT_EQ(E_INVALIDARG, SafeArrayAccessData(array, nullptr));
  EXPECT_EQ(E_INVALIDARG, SafeArrayUnaccessData(nullptr));
  EXPECT_EQ(0U, array->cLocks);
  SafeArrayDestroy(array);
  SafeArrayDestroy(variants);
}

TEST(SafeArray, AnArrayOfOthersWithoutDataOrTypeIsRefused) {
  SAFEARRAY foreign{};
  const LONG index = 0;
  LONG value = 0;
  VARTYPE type = VT_EMPTY;
  SAFEARRAY* copy = nullptr;
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetElement(&foreign, &index, &value)) << "no dimensions";
  EXPECT_EQ(E_INVALIDARG, SafeArrayCopy(&foreign, &copy));
  foreign.cDims = 1;
  foreign.cbElements = 4;
  foreign.rgsabound[0] = {1, 0};
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetElement(&foreign, &index, &value)) << "no data";
  EXPECT_EQ(E_INVALIDARG, SafeArrayGetVartype(&foreign, &type)) << "no type";
  EXPECT_EQ(E_INVALIDARG, SafeArrayCopy(&foreign, &copy));
  foreign.fFeatures = FADF_BSTR;
  EXPECT_EQ(S_OK, SafeArrayGetVartype(&foreign, &type)) << "told by the features";
  EXPECT_EQ(VT_BSTR, type);
  foreign.pvData = &value;
  EXPECT_EQ(E_INVALIDARG, SafeArrayCopy(&foreign, &copy)) << "elements that are no BSTRs";
}

TEST(SafeArray, OwnsCopiesOfTheStringsPutIntoIt) {
  const Balance balance;
  SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 0, 2);
  const LONG index = 0;
  BSTR text = SysAllocStringLen(L"a\0b", 3);
  ASSERT_EQ(S_OK, SafeArrayPutElement(array, &index, text));
  ASSERT_EQ(S_OK, SafeArrayPutElement(array, &index, text)) << "over the first one";
  SysFreeString(text);
  BSTR got = nullptr;
  ASSERT_EQ(S_OK, SafeArrayGetElement(array, &index, &got));
  EXPECT_EQ(std::wstring(L"a\0b", 3), std::wstring(got, SysStringLen(got)));
  SysFreeString(got);
  ASSERT_EQ(S_OK, SafeArrayPutElement(array, &index, nullptr)) << "null is the empty string";
  ASSERT_EQ(S_OK, SafeArrayGetElement(array, &index, &got));
  EXPECT_EQ(nullptr, got);
  SafeArrayDestroy(array);
}

TEST(SafeArray, OwnsReferencesToTheObjectsPutIntoIt) {
  const Balance balance;
  SAFEARRAY* array = SafeArrayCreateVector(VT_UNKNOWN, 0, 1);
  const LONG index = 0;
  IUnknown* object = Probe::make();
  ASSERT_EQ(S_OK, SafeArrayPutElement(array, &index, object));
  EXPECT_EQ(2U, referencesOf(object));
  ASSERT_EQ(S_OK, SafeArrayPutElement(array, &index, object));
  EXPECT_EQ(2U, referencesOf(object)) << "the same again";
  IUnknown* got = nullptr;
  ASSERT_EQ(S_OK, SafeArrayGetElement(array, &index, &got));
  EXPECT_EQ(object, got);
  got->Release();
  SAFEARRAY* copy = nullptr;
  ASSERT_EQ(S_OK, SafeArrayCopy(array, &copy));
  EXPECT_EQ(3U, referencesOf(object));
  ASSERT_EQ(S_OK, SafeArrayPutElement(array, &index, nullptr));
  EXPECT_EQ(2U, referencesOf(object));
  SafeArrayDestroy(copy);
  EXPECT_EQ(1U, referencesOf(object));
  object->Release();
  SafeArrayDestroy(array);
}

TEST(SafeArray, OwnsCopiesOfTheVariantsPutIntoIt) {
  const Balance balance;
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 1);
  const LONG index = 0;
  VARIANT value = variants::ownedText(L"x");
  ASSERT_EQ(S_OK, SafeArrayPutElement(array, &index, &value));
  VariantClear(&value);
  VARIANT got;
  std::memset(&got, 0xAA, sizeof got);
  ASSERT_EQ(S_OK, SafeArrayGetElement(array, &index, &got)) << "into a variant that nobody initialised";
  EXPECT_EQ(VT_BSTR, got.vt);
  EXPECT_STREQ(L"x", got.bstrVal);
  VariantClear(&got);
  SafeArrayDestroy(array);
}

TEST(SafeArray, ALockedArrayCannotBeDestroyed) {
  const Balance balance;
  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 1);
  void* data = nullptr;
  EXPECT_EQ(S_OK, SafeArrayAccessData(array, &data));
  EXPECT_EQ(S_OK, SafeArrayAccessData(array, &data));
  EXPECT_EQ(array->pvData, data);
  EXPECT_EQ(DISP_E_ARRAYISLOCKED, SafeArrayDestroy(array));
  EXPECT_EQ(S_OK, SafeArrayUnaccessData(array));
  EXPECT_EQ(DISP_E_ARRAYISLOCKED, SafeArrayDestroy(array));
  EXPECT_EQ(S_OK, SafeArrayUnaccessData(array));
  EXPECT_EQ(E_UNEXPECTED, SafeArrayUnaccessData(array)) << "unlocked once too often";
  EXPECT_EQ(S_OK, SafeArrayDestroy(array));
}

TEST(SafeArray, ALockCounterThatIsFullIsNotTurnedOver) {
  const Balance balance;
  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 1);
  void* data = nullptr;
  array->cLocks = std::numeric_limits<ULONG>::max();
  EXPECT_EQ(E_UNEXPECTED, SafeArrayAccessData(array, &data));
  array->cLocks = 0;
  SafeArrayDestroy(array);
}

TEST(SafeArray, ACopyIsUnlockedAndIndependent) {
  const Balance balance;
  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 3, 2);
  const LONG index = 4;
  LONG value = 7;
  SafeArrayPutElement(array, &index, &value);
  void* data = nullptr;
  SafeArrayAccessData(array, &data);
  SAFEARRAY* copy = nullptr;
  ASSERT_EQ(S_OK, SafeArrayCopy(array, &copy));
  SafeArrayUnaccessData(array);
  SafeArrayDestroy(array);
  value = 0;
  EXPECT_EQ(S_OK, SafeArrayGetElement(copy, &index, &value));
  EXPECT_EQ(7, value);
  EXPECT_EQ(0U, copy->cLocks);
  EXPECT_EQ(S_OK, SafeArrayDestroy(copy));
}

TEST(SafeArray, ExhaustedMemoryAtAnyAllocationGivesNoArray) {
  const SAFEARRAYBOUND bounds[] = {{2, 0}, {3, 0}};
  for (std::uint64_t n = 1; n <= 3; ++n) {
    const Balance balance;
    const AllocationFault fault = AllocationFault::failNth(n, Heap::Arrays);
    EXPECT_EQ(nullptr, SafeArrayCreate(VT_I4, 2, bounds)) << n;
  }
  const Balance balance;
  const AllocationFault fault = AllocationFault::failNth(4, Heap::Arrays);
  SAFEARRAY* array = SafeArrayCreate(VT_I4, 2, bounds);
  EXPECT_NE(nullptr, array);
  EXPECT_EQ(3U, fault.allocations());
  SafeArrayDestroy(array);
}

TEST(SafeArray, AnElementThatFindsNoMemoryLeavesTheOldOne) {
  const Balance balance;
  SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 0, 1);
  const LONG index = 0;
  BSTR text = SysAllocString(L"old");
  SafeArrayPutElement(array, &index, text);
  BSTR got = nullptr;
  {
    const AllocationFault fault = AllocationFault::failFrom(1);
    EXPECT_EQ(E_OUTOFMEMORY, SafeArrayPutElement(array, &index, text));
    EXPECT_EQ(E_OUTOFMEMORY, SafeArrayGetElement(array, &index, &got));
    EXPECT_EQ(nullptr, got);
  }
  EXPECT_EQ(S_OK, SafeArrayGetElement(array, &index, &got));
  EXPECT_STREQ(L"old", got);
  SysFreeString(got);
  SysFreeString(text);
  SafeArrayDestroy(array);
}

// --- against a model: a map from indices to values --------------------------------------------------------------------

using Indices = std::vector<LONG>;

struct Shape {
  std::vector<SAFEARRAYBOUND> bounds;

  [[nodiscard]] bool holds(const Indices& indices) const {
    for (std::size_t d = 0; d < bounds.size(); ++d) {
      const std::int64_t offset = std::int64_t{indices[d]} - bounds[d].lLbound;
      if (offset < 0 || offset >= std::int64_t{bounds[d].cElements}) return false;
    }
    return true;
  }
};

Shape anyShape() {
  const auto dimensions = *rc::gen::inRange(1, 5);
  Shape shape;
  for (int d = 0; d < dimensions; ++d) {
    const auto elements = *rc::gen::inRange<ULONG>(0, 5);
    const LONG least = elements == 0 ? lowest + 1 : lowest;
    const auto lower = *rc::gen::element<LONG>(
        -3, 0, 1, 1000, least, highest - static_cast<LONG>(elements) + (elements == 0 ? 0 : 1));
    shape.bounds.push_back({elements, lower});
  }
  return shape;
}

Indices anyIndices(const Shape& shape) {
  Indices indices;
  for (const SAFEARRAYBOUND& bound : shape.bounds) {
    // One beyond the bounds on either side, where that is a number.
    const std::int64_t index =
        std::int64_t{bound.lLbound} + *rc::gen::inRange<std::int64_t>(-1, std::int64_t{bound.cElements} + 1);
    indices.push_back(
        static_cast<LONG>(std::min<std::int64_t>(highest, std::max<std::int64_t>(lowest, index))));
  }
  return indices;
}

SAFEARRAY* create(VARTYPE type, const Shape& shape) {
  SAFEARRAY* array = SafeArrayCreate(type, static_cast<UINT>(shape.bounds.size()), shape.bounds.data());
  RC_ASSERT(array != nullptr);
  return array;
}

RC_GTEST_PROP(SafeArray, HoldsNumbersLikeAMap, ()) {
  const Shape shape = anyShape();
  SAFEARRAY* array = create(VT_I8, shape);
  std::map<Indices, LONGLONG> model;
  const int steps = *rc::gen::inRange(0, 60);
  for (int step = 0; step < steps; ++step) {
    const Indices indices = anyIndices(shape);
    LONGLONG value = *rc::gen::arbitrary<LONGLONG>();
    const bool holds = shape.holds(indices);
    RC_ASSERT(SafeArrayPutElement(array, indices.data(), &value) == (holds ? S_OK : DISP_E_BADINDEX));
    if (holds) model[indices] = value;
    SAFEARRAY* copy = nullptr;
    RC_ASSERT(SafeArrayCopy(array, &copy) == S_OK);
    RC_ASSERT(SafeArrayDestroy(array) == S_OK);
    array = copy;
  }
  for (const auto& [indices, expected] : model) {
    LONGLONG value = 0;
    RC_ASSERT(SafeArrayGetElement(array, indices.data(), &value) == S_OK);
    RC_ASSERT(value == expected);
  }
  RC_ASSERT(SafeArrayDestroy(array) == S_OK);
}

RC_GTEST_PROP(SafeArray, HoldsStringsLikeAMapAndLeaksNone, ()) {
  const auto before = platform::Ledger::snapshot();
  const Shape shape = anyShape();
  SAFEARRAY* array = create(VT_BSTR, shape);
  std::map<Indices, std::wstring> model;
  const int steps = *rc::gen::inRange(0, 40);
  for (int step = 0; step < steps; ++step) {
    const Indices indices = anyIndices(shape);
    const std::wstring text(static_cast<std::size_t>(*rc::gen::inRange(0, 4)),
                            *rc::gen::element(L'a', L'b', L'\0'));
    BSTR string = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    const bool holds = shape.holds(indices);
    RC_ASSERT(SafeArrayPutElement(array, indices.data(), string) == (holds ? S_OK : DISP_E_BADINDEX));
    SysFreeString(string);
    if (holds) model[indices] = text;
  }
  for (const auto& [indices, expected] : model) {
    BSTR string = nullptr;
    RC_ASSERT(SafeArrayGetElement(array, indices.data(), &string) == S_OK);
    RC_ASSERT(std::wstring(string, SysStringLen(string)) == expected);
    SysFreeString(string);
  }
  RC_ASSERT(SafeArrayDestroy(array) == S_OK);
  RC_ASSERT(platform::Ledger::difference(before, platform::Ledger::snapshot()).empty());
}

}  // namespace
}  // namespace velt::com
