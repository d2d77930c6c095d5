#pragma once

// IPerPropertyBrowsing: the values that an object proposes for a property, from which a palette makes a choice list.
// An object without choices for a property answers a failure.

#include "host/com/CountedArrays.h"
#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

struct IPerPropertyBrowsing : IUnknown {
  // The current value as a text. Not called by the layer.
  virtual HRESULT GetDisplayString(DISPID dispId, BSTR* text) = 0;
  // The class of the page on which the property is edited. Not called by the layer.
  virtual HRESULT MapPropertyToPage(DISPID dispId, CLSID* page) = 0;
  // Called by: GetPropertiesInfo, once for each property of a new class to see whether it has choices, and at the end
  // for each row that has. Failure: the row has no choices. The texts of the choices, and a cookie for each. Both
  // arrays are the caller's to free (see CountedArrays.h).
  virtual HRESULT GetPredefinedStrings(DISPID dispId, CALPOLESTR* strings, CADWORD* cookies) = 0;
  // The value that a choice stands for; the caller clears it. The layer passes the place of the text, counted from 0,
  // whatever the cookies are: number the cookies so. E_NOTIMPL: the choices have no values but their places.
  // Called by: GetPropertiesInfo. Any other failure ends the list before this choice.
  virtual HRESULT GetPredefinedValue(DISPID dispId, DWORD cookie, VARIANT* value) = 0;
};

inline constexpr IID IID_IPerPropertyBrowsing{
    0x376BD3AA, 0x3845, 0x101B, {0x84, 0xED, 0x08, 0x00, 0x2B, 0x2E, 0xC7, 0x13}};
