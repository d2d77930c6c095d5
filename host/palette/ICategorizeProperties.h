#pragma once

// Which category a property belongs to. Numbers from -32 to -1 are predefined.

#include "host/com/Bstr.h"
#include "host/com/IUnknown.h"

struct ICategorizeProperties : IUnknown {
  virtual HRESULT MapPropertyToCategory(DISPID dispId, PROPCAT* category) = 0;
  virtual HRESULT GetCategoryName(PROPCAT category, LCID locale, BSTR* name) = 0;
};

inline constexpr IID IID_ICategorizeProperties{
    0x4D07FC10, 0xF931, 0x11CE, {0xB0, 0x01, 0x00, 0xAA, 0x00, 0x68, 0x84, 0xE5}};
