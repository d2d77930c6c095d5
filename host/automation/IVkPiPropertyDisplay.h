#pragma once

// How a property wants to be displayed; the property is named by a VT_I4 variant that holds its DISPID.

#include "host/automation/Ids.h"
#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

struct IVkPiPropertyDisplay : IUnknown {
  virtual HRESULT GetCustomPropertyCtrl(VARIANT property, LCID locale, BSTR* control) = 0;
  virtual HRESULT GetPropertyColor(VARIANT property, ULONG* color) = 0;
  virtual HRESULT GetPropertyTextColor(VARIANT property, ULONG* color) = 0;
  virtual HRESULT IsFullView(VARIANT property, BOOL* full) = 0;
  virtual HRESULT GetPropertyWeight(VARIANT property, long* weight) = 0;
};
