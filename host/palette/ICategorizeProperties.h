#pragma once

// ICategorizeProperties: the category under whose heading a palette shows a property. Every automation object has it
// (without it the query ends with message 1020); for a dynamic property it is optional.

#include "host/com/Bstr.h"
#include "host/com/IUnknown.h"

struct ICategorizeProperties : IUnknown {
  // Called by: GetPropertiesInfo, for each property of a new class, and for dynamic rows. Failure: message 1021, and
  // the query ends; of dynamic rows the outputs alone count. -32 to -1 are predefined categories, whose names come
  // from the resource library; any other number is a category of the object's own. A dynamic property is asked with
  // the DISPID -23.
  virtual HRESULT MapPropertyToCategory(DISPID dispId, PROPCAT* category) = 0;
  // The name of a category of the object's own; the caller frees it. The layer asks automation objects with the
  // property's DISPID in the place of the locale, so no object may depend on getting a locale there.
  // Called by: the same. Failure: message 1022, and the query ends; an empty name becomes the text of message 1023.
  virtual HRESULT GetCategoryName(PROPCAT category, LCID locale, BSTR* name) = 0;
};

inline constexpr IID IID_ICategorizeProperties{
    0x4D07FC10, 0xF931, 0x11CE, {0xB0, 0x01, 0x00, 0xAA, 0x00, 0x68, 0x84, 0xE5}};
