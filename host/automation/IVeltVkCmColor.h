#pragma once

// IVeltVkCmColor: a color as an automation object, and as such the value of a property. By this interface the layer
// knows colors among the objects that properties answer. Numbers and names are those of VkCmColor; strings that are
// answered are the caller's to free. The layer does not look at the results of the three get methods.

#include "host/automation/Ids.h"
#include "host/com/IDispatch.h"

struct IVeltVkCmColor : IDispatch {
  // The 32-bit value of VkCmColor. Called by: GetPropertiesInfo and IsDifferentByLayerColors, to get it.
  virtual HRESULT put_EntityColor(LONG value) = 0;
  virtual HRESULT get_EntityColor(LONG* value) = 0;
  // The name within a color book, and that of the book. Called by: the same.
  virtual HRESULT get_ColorName(BSTR* name) = 0;
  virtual HRESULT get_BookName(BSTR* name) = 0;
  // Not called by the layer.
  virtual HRESULT SetNames(BSTR colorName, BSTR bookName) = 0;
};
