#pragma once

// VARIANTs for tests, in a word each. All but ownedText() own nothing, so nobody need clear them.

#include <string_view>

#include "host/com/Bstr.h"
#include "host/com/IDispatch.h"
#include "host/com/SafeArray.h"
#include "host/com/Variant.h"

namespace velt::variants {

// Any tag over any bits.
inline VARIANT ofType(VARTYPE type, LONGLONG bits = 0) {
  VARIANT made{};
  made.vt = type;
  made.llVal = bits;
  return made;
}

inline VARIANT empty() {
  return ofType(VT_EMPTY);
}
inline VARIANT i2(SHORT number) {
  return ofType(VT_I2, static_cast<USHORT>(number));
}
inline VARIANT i4(LONG number) {
  return ofType(VT_I4, static_cast<ULONG>(number));
}
inline VARIANT i8(LONGLONG number) {
  return ofType(VT_I8, number);
}
inline VARIANT ui8(ULONGLONG number) {
  return ofType(VT_UI8, static_cast<LONGLONG>(number));
}
inline VARIANT r4(float number) {
  VARIANT made = ofType(VT_R4);
  made.fltVal = number;
  return made;
}
inline VARIANT r8(double number) {
  VARIANT made = ofType(VT_R8);
  made.dblVal = number;
  return made;
}
inline VARIANT currency(LONGLONG tenThousandths) {
  return ofType(VT_CY, tenThousandths);
}
inline VARIANT boolean(bool truth) {
  return ofType(VT_BOOL, truth ? 0xFFFF : 0);
}

// Of what somebody else owns.
inline VARIANT borrowed(BSTR text) {
  VARIANT made = ofType(VT_BSTR);
  made.bstrVal = text;
  return made;
}
inline VARIANT borrowed(IDispatch* object) {
  VARIANT made = ofType(VT_DISPATCH);
  made.pdispVal = object;
  return made;
}
inline VARIANT borrowed(IUnknown* object) {
  VARIANT made = ofType(VT_UNKNOWN);
  made.punkVal = object;
  return made;
}
inline VARIANT borrowed(SAFEARRAY* array) {
  VARTYPE element = VT_EMPTY;
  SafeArrayGetVartype(array, &element);
  VARIANT made = ofType(static_cast<VARTYPE>(VT_ARRAY | element));
  made.parray = array;
  return made;
}

// A string of its own: whoever gets it clears it.
inline VARIANT ownedText(std::wstring_view text) {
  return borrowed(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
}

}  // namespace velt::variants
