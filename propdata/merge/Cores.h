#pragma once

// Cores of this folder that others call. Each does what its exported function promises, which is told in the public
// header, and throws where the function would catch (errors/Guard.h).

#include "propdata/VeltPropData.h"

namespace velt::propdata {

// Of ExcuteIntersect.
bool intersect(TqVector<TqVector<PROPINFO>>& lists, TqVector<PROPINFO>& result, CStdStr<wchar_t>& errorText);

// Of comparePropInfo.
bool compareRows(PROPINFO& first, const PROPINFO& other, bool& found, CStdStr<wchar_t>& errorText);

// Of VariantToColorHelper: whether the value is a color.
bool readColor(const VARIANT& value, VkCmColor& color);

// Of IsDifferentByLayerColors, for two rows.
bool differByLayerColors(const PROPINFO& first, const PROPINFO& other);

}  // namespace velt::propdata
