#pragma once

// Predefined values of single properties.

#include "host/com/CountedArrays.h"
#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

struct IPerPropertyBrowsing : IUnknown {
  virtual HRESULT GetDisplayString(DISPID dispId, BSTR* text) = 0;
  virtual HRESULT MapPropertyToPage(DISPID dispId, CLSID* page) = 0;
  virtual HRESULT GetPredefinedStrings(DISPID dispId, CALPOLESTR* strings, CADWORD* cookies) = 0;
  virtual HRESULT GetPredefinedValue(DISPID dispId, DWORD cookie, VARIANT* value) = 0;
};

inline constexpr IID IID_IPerPropertyBrowsing{
    0x376BD3AA, 0x3845, 0x101B, {0x84, 0xED, 0x08, 0x00, 0x2B, 0x2E, 0xC7, 0x13}};
