#include "host/com/Variant.h"

#include <cstdint>

#include "embedded/com/References.h"
#include "embedded/com/VariantTypes.h"
#include "host/com/IDispatch.h"

namespace {

// Makes `copy` a second owner of what `source` owns. After a failure `copy` owns nothing and must not be cleared.
HRESULT duplicate(const VARIANT& source, VARIANT& copy) {
  using namespace velt::com;
  copy = source;
  if (isByRef(source.vt)) return S_OK;
  if (isArray(source.vt)) return SafeArrayCopy(source.parray, &copy.parray);
  switch (source.vt) {
    case VT_BSTR:
      if (source.bstrVal == nullptr) return S_OK;
      copy.bstrVal = SysAllocStringByteLen(static_cast<const char*>(static_cast<const void*>(source.bstrVal)),
                                           SysStringByteLen(source.bstrVal));
      return copy.bstrVal != nullptr ? S_OK : E_OUTOFMEMORY;
    case VT_UNKNOWN:
    case VT_DISPATCH:
      return addReference(source.punkVal);
    default:
      return S_OK;
  }
}

// The types whose values end with the VARIANT, a bit for each: nearly every value that is cleared is of one.
constexpr std::uint32_t plainTypes = [] {
  std::uint32_t types = 0;
  for (VARTYPE type = 0; type < 32; ++type) {
    const bool isOwner = type == VT_BSTR || type == VT_UNKNOWN || type == VT_DISPATCH;
    if (velt::com::isValidVariantType(type) && !isOwner) types |= std::uint32_t{1} << type;
  }
  return types;
}();

constexpr bool ownsNothing(VARTYPE type) {
  return type < 32 && (plainTypes >> type & 1) != 0;
}

HRESULT clearOwner(VARIANT* variant) {
  using namespace velt::com;
  if (!isValidVariantType(variant->vt)) return badVariantType;
  if (!isByRef(variant->vt)) {
    if (isArray(variant->vt)) {
      const HRESULT result = SafeArrayDestroy(variant->parray);
      if (FAILED(result)) return result;
    } else if (variant->vt == VT_BSTR) {
      SysFreeString(variant->bstrVal);
    } else if (variant->vt == VT_UNKNOWN || variant->vt == VT_DISPATCH) {
      // Empty before the release: the object may end with it and destroy the owner of this variant.
      IUnknown* held = variant->punkVal;
      variant->vt = VT_EMPTY;
      releaseReference(held);
    }
  }
  variant->vt = VT_EMPTY;
  return S_OK;
}

}  // namespace

void VariantInit(VARIANT* variant) {
  if (variant != nullptr) variant->vt = VT_EMPTY;
}

HRESULT VariantClear(VARIANT* variant) {
  if (variant == nullptr) return E_INVALIDARG;
  if (!ownsNothing(variant->vt)) return clearOwner(variant);
  variant->vt = VT_EMPTY;
  return S_OK;
}

HRESULT VariantCopy(VARIANT* destination, const VARIANT* source) {
  using namespace velt::com;
  if (destination == nullptr || source == nullptr) return E_INVALIDARG;
  if (!isValidVariantType(source->vt)) return badVariantType;
  if (destination == source) return S_OK;
  // Copied before the destination is cleared, because the source may be part of what the destination owns.
  VARIANT copy;
  HRESULT result = duplicate(*source, copy);
  if (FAILED(result)) return result;
  result = VariantClear(destination);
  if (FAILED(result)) {
    VariantClear(&copy);
    return result;
  }
  *destination = copy;
  return S_OK;
}
