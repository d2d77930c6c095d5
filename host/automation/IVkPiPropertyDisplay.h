#pragma once

// IVkPiPropertyDisplay: how a property wants to be displayed. The property is named by a VARIANT of type VT_I4 that
// holds its DISPID. An object may lack this interface. The layer calls GetPropertyWeight alone; the other methods are
// for palettes.

#include "host/automation/Ids.h"
#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

struct IVkPiPropertyDisplay : IUnknown {
  // Not called by the layer: the class of an editor of its own, colors of the row, and whether it takes the whole
  // width.
  virtual HRESULT GetCustomPropertyCtrl(VARIANT property, LCID locale, BSTR* control) = 0;
  virtual HRESULT GetPropertyColor(VARIANT property, ULONG* color) = 0;
  virtual HRESULT GetPropertyTextColor(VARIANT property, ULONG* color) = 0;
  virtual HRESULT IsFullView(VARIANT property, BOOL* full) = 0;
  // Called by: GetPropertiesInfo and GetPropInfoValue, for each row. Failure: the weight stays as it is, 0 in a query.
  // The property's place in the display order: rows with a smaller weight stand first, negative ones before those that
  // have none (0). Only the lower 32 bits count, and where the layer's own table of weights lists the property, its
  // weight there counts instead.
  virtual HRESULT GetPropertyWeight(VARIANT property, long* weight) = 0;
};
