#include "host/com/OleSafeArray.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "embedded/com/VariantTypes.h"
#include "host/com/ComError.h"
#include "host/com/IUnknown.h"

namespace {

void raiseUnless(HRESULT result) {
  if (FAILED(result)) _com_raise_error(result);
}

// Copies element by element, so that the array gets strings and references of its own.
HRESULT fill(SAFEARRAY* array, VARTYPE type, DWORD elements, const void* source, LONG lowerBound) {
  const std::size_t size = velt::com::elementSize(type);
  const bool isPassedAsItIs = type == VT_BSTR || type == VT_UNKNOWN || type == VT_DISPATCH;
  // SafeArrayPutElement takes no pointers to const, although it only reads.
  auto* bytes = static_cast<char*>(const_cast<void*>(source));
  for (DWORD i = 0; i < elements; ++i) {
    void* element = bytes + i * size;
    if (isPassedAsItIs) element = *static_cast<void**>(element);
    const LONG index = static_cast<LONG>(lowerBound + std::int64_t{i});
    const HRESULT result = SafeArrayPutElement(array, &index, element);
    if (FAILED(result)) return result;
  }
  return S_OK;
}

SAFEARRAY* arrayOf(const VARIANT& variant) {
  const bool holdsArray = velt::com::isArray(variant.vt) && !velt::com::isByRef(variant.vt);
  return holdsArray ? variant.parray : nullptr;
}

}  // namespace

COleSafeArray::COleSafeArray() : VARIANT{} {}

COleSafeArray::~COleSafeArray() {
  Clear();
}

void COleSafeArray::Clear() {
  VariantClear(this);
}

void COleSafeArray::Attach(VARIANT& variant) {
  if (&variant == this) return;
  if (arrayOf(variant) == nullptr) _com_raise_error(E_INVALIDARG);
  raiseUnless(VariantClear(this));
  static_cast<VARIANT&>(*this) = variant;
  variant.vt = VT_EMPTY;
}

VARIANT COleSafeArray::Detach() {
  const VARIANT detached = *this;
  vt = VT_EMPTY;
  return detached;
}

void COleSafeArray::CreateOneDim(VARTYPE type, DWORD elements, const void* source, LONG lowerBound) {
  if (velt::com::elementSize(type) == 0) _com_raise_error(E_INVALIDARG);
  const std::int64_t upperBound = std::int64_t{lowerBound} + elements - 1;
  if (!std::in_range<LONG>(upperBound)) _com_raise_error(E_INVALIDARG);
  raiseUnless(VariantClear(this));
  SAFEARRAY* array = SafeArrayCreateVector(type, lowerBound, elements);
  if (array == nullptr) _com_raise_error(E_OUTOFMEMORY);
  const HRESULT filled = source != nullptr ? fill(array, type, elements, source, lowerBound) : S_OK;
  if (FAILED(filled)) {
    SafeArrayDestroy(array);
    _com_raise_error(filled);
  }
  vt = static_cast<VARTYPE>(VT_ARRAY | type);
  parray = array;
}

void COleSafeArray::PutElement(const LONG* index, void* element) {
  raiseUnless(SafeArrayPutElement(arrayOf(*this), index, element));
}

void COleSafeArray::GetElement(const LONG* index, void* element) {
  raiseUnless(SafeArrayGetElement(arrayOf(*this), index, element));
}
