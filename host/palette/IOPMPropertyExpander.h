#pragma once

// Splits one property into elements, each with a label, a cookie and a value.

#include "host/com/CountedArrays.h"
#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

struct IOPMPropertyExpander : IUnknown {
  virtual HRESULT GetElementValue(DISPID dispId, DWORD cookie, VARIANT* value) = 0;
  virtual HRESULT SetElementValue(DISPID dispId, DWORD cookie, VARIANT value) = 0;
  virtual HRESULT GetElementStrings(DISPID dispId, CALPOLESTR* strings, CADWORD* cookies) = 0;
  virtual HRESULT GetElementGrouping(DISPID dispId, SHORT* grouping) = 0;  // 0: not grouped
  virtual HRESULT GetGroupCount(DISPID dispId, long* groups) = 0;
};

inline constexpr IID IID_IOPMPropertyExpander{
    0x6E81C2A5, 0x93D7, 0x4B1F, {0xA6, 0x5C, 0x2D, 0x77, 0x91, 0xE3, 0x4A, 0x18}};
