#pragma once

// How an object wants its properties shown: label, editable now, shown at all. Each flag is one byte.

#include "host/com/Bstr.h"
#include "host/com/IUnknown.h"

struct IOPMPropertyExtension : IUnknown {
  virtual HRESULT GetDisplayName(DISPID dispId, BSTR* name) = 0;
  virtual HRESULT Editable(DISPID dispId, BOOL* editable) = 0;
  virtual HRESULT ShowProperty(DISPID dispId, BOOL* show) = 0;
};

inline constexpr IID IID_IOPMPropertyExtension{
    0x6E81C2A4, 0x93D7, 0x4B1F, {0xA6, 0x5C, 0x2D, 0x77, 0x91, 0xE3, 0x4A, 0x18}};
