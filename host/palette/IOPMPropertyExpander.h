#pragma once

// IOPMPropertyExpander: splits one property into elements, each a row of its own with a label and a value: a point
// into X, Y and Z. The object knows an element by its cookie, which must not change while the property has the same
// elements.
//
// The layer asks it for properties of the type VT_VARIANT. A failure for a property, or no such interface, means that
// it is a single value.

#include "host/com/CountedArrays.h"
#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

struct IOPMPropertyExpander : IUnknown {
  // The caller clears the value.
  // Called by: GetPropertiesInfo, for each element. Failure: the elements that were read so far stand in
  // place of the property.
  virtual HRESULT GetElementValue(DISPID dispId, DWORD cookie, VARIANT* value) = 0;
  // value stays the caller's, and may be of any type.
  // Called by: SetPropertiesValue, for an element. Failure: message 1014 with the name, and the write ends.
  virtual HRESULT SetElementValue(DISPID dispId, DWORD cookie, VARIANT value) = 0;
  // Called by: GetPropertiesInfo, also to compare the numbers of elements of two entities. Failure: a single value;
  // while elements are compared, message 1015, which costs the row. The labels of the elements and their cookies, as
  // many of one as of the other, in the order of the rows. Both arrays are the caller's to free (see CountedArrays.h).
  virtual HRESULT GetElementStrings(DISPID dispId, CALPOLESTR* strings, CADWORD* cookies) = 0;
  // Called by: GetPropertiesInfo; the result is not looked at, as that of the next.
  // Not 0 when the elements come in groups that a palette shows one at a time, as the vertices of a polyline. 0 when
  // every element is a row of its own.
  virtual HRESULT GetElementGrouping(DISPID dispId, SHORT* grouping) = 0;
  // Number of groups; asked only for a grouped property.
  virtual HRESULT GetGroupCount(DISPID dispId, long* groups) = 0;
};

inline constexpr IID IID_IOPMPropertyExpander{
    0x6E81C2A5, 0x93D7, 0x4B1F, {0xA6, 0x5C, 0x2D, 0x77, 0x91, 0xE3, 0x4A, 0x18}};
