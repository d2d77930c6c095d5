#pragma once

// IDynamicProperty2: a property that a plug-in adds to entities, in the newer of two generations: an entity is named by
// its automation object, on which an implementation calls AddRef to keep it. Everything else is as in IDynamicProperty.

#include "host/com/IDispatch.h"

struct IDynamicProperty2 : IUnknown {
  // As in IDynamicProperty, entry by entry.
  virtual HRESULT GetGUID(GUID* guid) = 0;
  virtual HRESULT GetDisplayName(BSTR* name) = 0;
  virtual HRESULT IsPropertyEnabled(IDispatch* entity, BOOL* enabled) = 0;
  virtual HRESULT IsPropertyReadOnly(BOOL* readOnly) = 0;
  virtual HRESULT GetDescription(BSTR* description) = 0;
  virtual HRESULT GetCurrentValueName(BSTR* typeName) = 0;
  virtual HRESULT GetCurrentValueType(VARTYPE* type) = 0;
  virtual HRESULT GetCurrentValueData(IDispatch* entity, VARIANT* value) = 0;
  virtual HRESULT SetCurrentValueData(IDispatch* entity, VARIANT value) = 0;
};

inline constexpr IID IID_IDynamicProperty2{
    0x6E81C2A7, 0x93D7, 0x4B1F, {0xA6, 0x5C, 0x2D, 0x77, 0x91, 0xE3, 0x4A, 0x18}};
