#pragma once

// What the runtime knows about type tags: which are valid, and how large an element is.

#include <cstddef>

#include "host/com/HResult.h"
#include "host/com/Variant.h"

namespace velt::com {

inline constexpr HRESULT badVariantType = failure(0x80020008U);

constexpr bool isByRef(VARTYPE type) {
  return (type & VT_BYREF) != 0;
}
constexpr bool isArray(VARTYPE type) {
  return (type & VT_ARRAY) != 0;
}

// The bytes that one element of an array takes; 0 for types that no array can hold.
constexpr ULONG elementSize(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    case VT_BSTR:
    case VT_UNKNOWN:
    case VT_DISPATCH:
      return sizeof(void*);
    case VT_DECIMAL:
      return sizeof(DECIMAL);
    case VT_VARIANT:
      return sizeof(VARIANT);
    default:
      return 0;
  }
}

// Whether a VARIANT may carry this tag. Records are left out: nothing here can copy or free one.
constexpr bool isValidVariantType(VARTYPE type) {
  const auto base = static_cast<VARTYPE>(type & VT_TYPEMASK);
  if ((type & ~(VT_TYPEMASK | VT_ARRAY | VT_BYREF)) != 0) return false;
  if (isArray(type)) return elementSize(base) != 0;
  if (isByRef(type)) return elementSize(base) != 0;
  return base == VT_EMPTY || base == VT_NULL || (elementSize(base) != 0 && base != VT_VARIANT);
}

}  // namespace velt::com
