#pragma once

// IDynamicProperty: a property that a plug-in adds to entities, in the older of two generations: an entity is named by
// its database id in old-id form (VkDbObjectId::asOldId). It is used for property objects without IDynamicProperty2.
//
// Ownership: one property object speaks for all entities. Rows keep its pointer without a reference, so its source
// keeps it alive as long as a palette may show it. What a method answers is the caller's to free or clear.
// Called by: GetPropertiesInfo all but SetCurrentValueData, which SetPropertiesValue calls.
// Failure: the layer looks at the results of IsPropertyEnabled and GetCurrentValueName alone. Of every other method it
// takes what the output holds, which it has set to zero before.

#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

struct IDynamicProperty : IUnknown {
  // Identifies the property, in whatever language its name is.
  virtual HRESULT GetGUID(GUID* guid) = 0;
  // The label of the row.
  virtual HRESULT GetDisplayName(BSTR* name) = 0;
  // Whether the entity has the property: only when the byte is exactly 1. -1 hides it.
  virtual HRESULT IsPropertyEnabled(long oldId, BOOL* enabled) = 0;
  virtual HRESULT IsPropertyReadOnly(BOOL* readOnly) = 0;
  // The text that explains the row.
  virtual HRESULT GetDescription(BSTR* description) = 0;
  // The name of a custom type, such as VELT_COLOR, for which palettes have an editor. A failure when there is none.
  virtual HRESULT GetCurrentValueName(BSTR* typeName) = 0;
  // The type of the values that GetCurrentValueData answers.
  virtual HRESULT GetCurrentValueType(VARTYPE* type) = 0;
  virtual HRESULT GetCurrentValueData(long oldId, VARIANT* value) = 0;
  // value stays the caller's, and may be of any type.
  virtual HRESULT SetCurrentValueData(long oldId, VARIANT value) = 0;
};

inline constexpr IID IID_IDynamicProperty{
    0x6E81C2A6, 0x93D7, 0x4B1F, {0xA6, 0x5C, 0x2D, 0x77, 0x91, 0xE3, 0x4A, 0x18}};
