#pragma once

// IDynamicEnumProperty: the choices of a dynamic property. An optional interface of the property object.

#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

struct IDynamicEnumProperty : IUnknown {
  // Called by: GetPropertiesInfo. The result is not looked at, nor that of the next: the outputs count.
  virtual HRESULT GetNumPropertyValues(LONG* count) = 0;
  // The text of a choice, and the value that it stands for. index counts from 0; the caller frees the text and clears a
  // value that is a string. After a failing value the property keeps the choices that it had.
  virtual HRESULT GetPropValueName(LONG index, BSTR* name) = 0;
  virtual HRESULT GetPropValueData(LONG index, VARIANT* value) = 0;
};

inline constexpr IID IID_IDynamicEnumProperty{
    0x6E81C2A8, 0x93D7, 0x4B1F, {0xA6, 0x5C, 0x2D, 0x77, 0x91, 0xE3, 0x4A, 0x18}};
