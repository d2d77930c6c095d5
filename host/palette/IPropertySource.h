#pragma once

// IPropertySource: what a plug-in registers to add rows to entities. The host finds it by its name (see
// PerInstanceProperties.h).

#include "host/com/IDispatch.h"

struct IPropertySource : IUnknown {
  // Called by: GetPropertiesInfo. Failure: no rows of this source.
  // The dynamic properties that this entity has, as an array of objects (VT_ARRAY | VT_UNKNOWN) that the caller
  // clears; VT_EMPTY when it has none. Each object is an IDynamicProperty2 or an IDynamicProperty, and the source
  // keeps it alive: rows keep its pointer without a reference.
  virtual HRESULT GetProperties(IDispatch* entity, VARIANT* properties) = 0;
};

inline constexpr IID IID_IPropertySource{
    0x6E81C2A9, 0x93D7, 0x4B1F, {0xA6, 0x5C, 0x2D, 0x77, 0x91, 0xE3, 0x4A, 0x18}};
