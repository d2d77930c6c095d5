#include "host/com/SafeArray.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

#include "embedded/com/References.h"
#include "embedded/com/VariantTypes.h"
#include "embedded/platform/Allocation.h"
#include "embedded/platform/Ledger.h"
#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

namespace {

using velt::com::elementSize;
using velt::platform::Heap;

// Stands before every array. SAFEARRAY has no field for the element type; with FADF_HAVEVARTYPE it stands in the four
// bytes before the array, where everybody who knows the layout looks for it.
struct Hidden {
  std::uint32_t reserved[3];
  std::uint32_t type;
};
static_assert(sizeof(Hidden) == 16 && alignof(SAFEARRAY) <= 16);

// Arrays in arrays are copied by recursion. No real one is this deep, but one that contains itself is.
constexpr int deepest = 100;

USHORT featuresOf(VARTYPE type) {
  switch (type) {
    case VT_BSTR:
      return FADF_BSTR | FADF_HAVEVARTYPE;
    case VT_UNKNOWN:
      return FADF_UNKNOWN | FADF_HAVEVARTYPE;
    case VT_DISPATCH:
      return FADF_DISPATCH | FADF_HAVEVARTYPE;
    case VT_VARIANT:
      return FADF_VARIANT | FADF_HAVEVARTYPE;
    default:
      return FADF_HAVEVARTYPE;
  }
}

// The element type; VT_EMPTY when the array does not tell it.
VARTYPE typeOf(const SAFEARRAY* array) {
  if ((array->fFeatures & FADF_HAVEVARTYPE) != 0) {
    const auto* hidden = static_cast<const Hidden*>(static_cast<const void*>(array)) - 1;
    return static_cast<VARTYPE>(hidden->type);
  }
  if ((array->fFeatures & FADF_BSTR) != 0) return VT_BSTR;
  if ((array->fFeatures & FADF_UNKNOWN) != 0) return VT_UNKNOWN;
  if ((array->fFeatures & FADF_DISPATCH) != 0) return VT_DISPATCH;
  if ((array->fFeatures & FADF_VARIANT) != 0) return VT_VARIANT;
  return VT_EMPTY;
}

// The bounds stand in the array with the last dimension first; `dimension` counts from 1.
const SAFEARRAYBOUND& boundOf(const SAFEARRAY* array, UINT dimension) {
  return (&array->rgsabound[0])[array->cDims - dimension];
}

LONG upperBound(const SAFEARRAYBOUND& bound) {
  return static_cast<LONG>(std::int64_t{bound.lLbound} + std::int64_t{bound.cElements} - 1);
}

bool fitsLong(const SAFEARRAYBOUND& bound) {
  return std::in_range<LONG>(std::int64_t{bound.lLbound} + std::int64_t{bound.cElements} - 1);
}

// Multiplies the sizes of the dimensions. False when the product does not fit.
bool countCells(const SAFEARRAYBOUND* bounds, UINT dimensions, std::size_t& cells) {
  bool none = false;
  for (UINT i = 0; i < dimensions; ++i)
    none = none || bounds[i].cElements == 0;
  cells = none ? 0 : 1;
  for (UINT i = 0; i < dimensions; ++i) {
    if (__builtin_mul_overflow(cells, std::size_t{bounds[i].cElements}, &cells)) return false;
  }
  return true;
}

std::size_t cellsOf(const SAFEARRAY* array) {
  std::size_t cells = 0;
  return countCells(&array->rgsabound[0], array->cDims, cells) ? cells : 0;
}

template <class Element>
Element* elementsOf(SAFEARRAY* array) {
  return static_cast<Element*>(array->pvData);
}

// An array with zeroed elements; null when memory is exhausted or the size does not fit.
SAFEARRAY* make(VARTYPE type, UINT dimensions, const SAFEARRAYBOUND* lastDimensionFirst) {
  std::size_t cells = 0;
  std::size_t bytes = 0;
  if (!countCells(lastDimensionFirst, dimensions, cells)) return nullptr;
  if (__builtin_mul_overflow(cells, std::size_t{elementSize(type)}, &bytes)) return nullptr;
  const std::size_t boundBytes = dimensions * sizeof(SAFEARRAYBOUND);
  void* block =
      velt::platform::allocate(Heap::Arrays, sizeof(Hidden) + offsetof(SAFEARRAY, rgsabound) + boundBytes);
  if (block == nullptr) return nullptr;
  void* data = velt::platform::allocateZeroed(Heap::Arrays, bytes);
  if (data == nullptr) {
    velt::platform::deallocate(block);
    return nullptr;
  }
  auto* hidden = static_cast<Hidden*>(block);
  *hidden = Hidden{{0, 0, 0}, type};
  auto* array = static_cast<SAFEARRAY*>(static_cast<void*>(hidden + 1));
  array->cDims = static_cast<USHORT>(dimensions);
  array->fFeatures = featuresOf(type);
  array->cbElements = elementSize(type);
  array->cLocks = 0;
  array->pvData = data;
  std::memcpy(&array->rgsabound[0], lastDimensionFirst, boundBytes);
  velt::platform::safeArrayAccount.handOut();
  return array;
}

void releaseElements(SAFEARRAY* array) {
  const std::size_t cells = array->pvData != nullptr ? cellsOf(array) : 0;
  switch (typeOf(array)) {
    case VT_BSTR:
      for (std::size_t i = 0; i < cells; ++i)
        SysFreeString(elementsOf<BSTR>(array)[i]);
      break;
    case VT_UNKNOWN:
    case VT_DISPATCH:
      for (std::size_t i = 0; i < cells; ++i)
        velt::com::releaseReference(elementsOf<IUnknown*>(array)[i]);
      break;
    case VT_VARIANT:
      for (std::size_t i = 0; i < cells; ++i)
        VariantClear(&elementsOf<VARIANT>(array)[i]);
      break;
    default:
      break;
  }
}

// Copies the whole length, NULs within the string included.
HRESULT copyString(BSTR from, BSTR& to) {
  to = nullptr;
  if (from == nullptr) return S_OK;
  to =
      SysAllocStringByteLen(static_cast<const char*>(static_cast<const void*>(from)), SysStringByteLen(from));
  return to != nullptr ? S_OK : E_OUTOFMEMORY;
}

// Elements that were copied before a failure stay in the target, which owns them.
HRESULT copyElements(SAFEARRAY* from, SAFEARRAY* to) {
  const std::size_t cells = cellsOf(from);
  HRESULT result = S_OK;
  switch (typeOf(from)) {
    case VT_BSTR:
      for (std::size_t i = 0; i < cells && SUCCEEDED(result); ++i) {
        result = copyString(elementsOf<BSTR>(from)[i], elementsOf<BSTR>(to)[i]);
      }
      break;
    case VT_UNKNOWN:
    case VT_DISPATCH:
      for (std::size_t i = 0; i < cells && SUCCEEDED(result); ++i) {
        IUnknown* held = elementsOf<IUnknown*>(from)[i];
        result = velt::com::addReference(held);
        if (SUCCEEDED(result)) elementsOf<IUnknown*>(to)[i] = held;
      }
      break;
    case VT_VARIANT:
      for (std::size_t i = 0; i < cells && SUCCEEDED(result); ++i) {
        result = VariantCopy(&elementsOf<VARIANT>(to)[i], &elementsOf<VARIANT>(from)[i]);
      }
      break;
    default:
      std::memcpy(to->pvData, from->pvData, cells * from->cbElements);
      break;
  }
  return result;
}

// Finds the element with these indices. In memory the first dimension varies fastest.
HRESULT locate(SAFEARRAY* array, const LONG* indices, void*& element) {
  if (array->cDims == 0 || array->pvData == nullptr) return E_INVALIDARG;
  std::size_t cell = 0;
  std::size_t stride = 1;
  for (UINT dimension = 1; dimension <= array->cDims; ++dimension) {
    const SAFEARRAYBOUND& bound = boundOf(array, dimension);
    const std::int64_t offset = std::int64_t{indices[dimension - 1]} - std::int64_t{bound.lLbound};
    if (offset < 0 || offset >= std::int64_t{bound.cElements}) return DISP_E_BADINDEX;
    cell += static_cast<std::size_t>(offset) * stride;
    stride *= bound.cElements;
  }
  element = static_cast<char*>(array->pvData) + cell * array->cbElements;
  return S_OK;
}

}  // namespace

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, const SAFEARRAYBOUND* bounds) {
  if (elementSize(type) == 0 || bounds == nullptr) return nullptr;
  if (dimensions == 0 || dimensions > std::numeric_limits<USHORT>::max()) return nullptr;
  for (UINT i = 0; i < dimensions; ++i) {
    if (!fitsLong(bounds[i])) return nullptr;
  }
  if (dimensions == 1) return make(type, 1, bounds);
  const std::size_t bytes = dimensions * sizeof(SAFEARRAYBOUND);
  auto* reversed = static_cast<SAFEARRAYBOUND*>(velt::platform::allocate(Heap::Arrays, bytes));
  if (reversed == nullptr) return nullptr;
  for (UINT i = 0; i < dimensions; ++i)
    reversed[dimensions - 1 - i] = bounds[i];
  SAFEARRAY* array = make(type, dimensions, reversed);
  velt::platform::deallocate(reversed);
  return array;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements) {
  const SAFEARRAYBOUND bound{elements, lowerBound};
  return SafeArrayCreate(type, 1, &bound);
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
  if (array == nullptr) return S_OK;
  if (array->cLocks != 0) return DISP_E_ARRAYISLOCKED;
  // Locked, so that releasing an element cannot destroy this array a second time.
  array->cLocks = 1;
  releaseElements(array);
  velt::platform::deallocate(array->pvData);
  velt::platform::deallocate(static_cast<Hidden*>(static_cast<void*>(array)) - 1);
  velt::platform::safeArrayAccount.giveBack();
  return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy) {
  if (copy == nullptr) return E_INVALIDARG;
  *copy = nullptr;
  if (array == nullptr) return S_OK;
  const VARTYPE type = typeOf(array);
  if (elementSize(type) == 0 || elementSize(type) != array->cbElements) return E_INVALIDARG;
  if (array->cDims == 0 || array->pvData == nullptr) return E_INVALIDARG;
  thread_local int depth = 0;
  if (depth == deepest) return E_INVALIDARG;
  SAFEARRAY* made = make(type, array->cDims, &array->rgsabound[0]);
  if (made == nullptr) return E_OUTOFMEMORY;
  ++depth;
  const HRESULT result = copyElements(array, made);
  --depth;
  if (FAILED(result)) {
    SafeArrayDestroy(made);
    return result;
  }
  *copy = made;
  return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array) {
  return array != nullptr ? array->cDims : 0;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) {
  if (array == nullptr || type == nullptr) return E_INVALIDARG;
  const VARTYPE found = typeOf(array);
  if (found == VT_EMPTY) return E_INVALIDARG;
  *type = found;
  return S_OK;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  if (array == nullptr || bound == nullptr) return E_INVALIDARG;
  if (dimension == 0 || dimension > array->cDims) return DISP_E_BADINDEX;
  *bound = boundOf(array, dimension).lLbound;
  return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  if (array == nullptr || bound == nullptr) return E_INVALIDARG;
  if (dimension == 0 || dimension > array->cDims) return DISP_E_BADINDEX;
  *bound = upperBound(boundOf(array, dimension));
  return S_OK;
}

HRESULT SafeArrayGetElement(SAFEARRAY* array, const LONG* indices, void* element) {
  if (array == nullptr || indices == nullptr || element == nullptr) return E_INVALIDARG;
  void* cell = nullptr;
  const HRESULT located = locate(array, indices, cell);
  if (FAILED(located)) return located;
  switch (typeOf(array)) {
    case VT_BSTR:
      return copyString(*static_cast<BSTR*>(cell), *static_cast<BSTR*>(element));
    case VT_UNKNOWN:
    case VT_DISPATCH: {
      IUnknown* held = *static_cast<IUnknown**>(cell);
      const HRESULT added = velt::com::addReference(held);
      if (SUCCEEDED(added)) *static_cast<IUnknown**>(element) = held;
      return added;
    }
    case VT_VARIANT:
      // The caller's variant may be uninitialised memory, so it is not cleared.
      static_cast<VARIANT*>(element)->vt = VT_EMPTY;
      return VariantCopy(static_cast<VARIANT*>(element), static_cast<VARIANT*>(cell));
    default:
      std::memcpy(element, cell, array->cbElements);
      return S_OK;
  }
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, const LONG* indices, void* element) {
  if (array == nullptr || indices == nullptr) return E_INVALIDARG;
  void* cell = nullptr;
  const HRESULT located = locate(array, indices, cell);
  if (FAILED(located)) return located;
  switch (typeOf(array)) {
    case VT_BSTR: {
      BSTR copy = nullptr;
      const HRESULT copied = copyString(static_cast<BSTR>(element), copy);
      if (FAILED(copied)) return copied;
      SysFreeString(*static_cast<BSTR*>(cell));
      *static_cast<BSTR*>(cell) = copy;
      return S_OK;
    }
    case VT_UNKNOWN:
    case VT_DISPATCH: {
      auto* added = static_cast<IUnknown*>(element);
      if (const HRESULT result = velt::com::addReference(added); FAILED(result)) return result;
      IUnknown* replaced = *static_cast<IUnknown**>(cell);
      *static_cast<IUnknown**>(cell) = added;
      velt::com::releaseReference(replaced);
      return S_OK;
    }
    case VT_VARIANT:
      if (element == nullptr) return E_INVALIDARG;
      return VariantCopy(static_cast<VARIANT*>(cell), static_cast<VARIANT*>(element));
    default:
      if (element == nullptr) return E_INVALIDARG;
      std::memmove(cell, element, array->cbElements);
      return S_OK;
  }
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
  if (array == nullptr || data == nullptr) return E_INVALIDARG;
  if (array->cLocks == std::numeric_limits<ULONG>::max()) return E_UNEXPECTED;
  ++array->cLocks;
  *data = array->pvData;
  return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) {
  if (array == nullptr) return E_INVALIDARG;
  if (array->cLocks == 0) return E_UNEXPECTED;
  --array->cLocks;
  return S_OK;
}
