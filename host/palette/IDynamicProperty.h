#pragma once

// A dynamic property, older generation: the entity is named by its database id in old-id form.

#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

struct IDynamicProperty : IUnknown {
  virtual HRESULT GetGUID(GUID* guid) = 0;
  virtual HRESULT GetDisplayName(BSTR* name) = 0;
  virtual HRESULT IsPropertyEnabled(long oldId, BOOL* enabled) = 0;  // enabled only when exactly 1
  virtual HRESULT IsPropertyReadOnly(BOOL* readOnly) = 0;
  virtual HRESULT GetDescription(BSTR* description) = 0;
  virtual HRESULT GetCurrentValueName(BSTR* typeName) = 0;  // name of a custom type, if any
  virtual HRESULT GetCurrentValueType(VARTYPE* type) = 0;
  virtual HRESULT GetCurrentValueData(long oldId, VARIANT* value) = 0;
  virtual HRESULT SetCurrentValueData(long oldId, VARIANT value) = 0;
};

inline constexpr IID IID_IDynamicProperty{
    0x6E81C2A6, 0x93D7, 0x4B1F, {0xA6, 0x5C, 0x2D, 0x77, 0x91, 0xE3, 0x4A, 0x18}};
