#pragma once

// A plug-in's list of dynamic properties for an entity.

#include "host/com/IDispatch.h"

struct IPropertySource : IUnknown {
  virtual HRESULT GetProperties(IDispatch* entity,
                                VARIANT* properties) = 0;  // a SAFEARRAY of IUnknown, or empty
};

inline constexpr IID IID_IPropertySource{
    0x6E81C2A9, 0x93D7, 0x4B1F, {0xA6, 0x5C, 0x2D, 0x77, 0x91, 0xE3, 0x4A, 0x18}};
