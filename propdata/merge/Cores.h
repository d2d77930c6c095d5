#pragma once

// Cores of this folder that others call. Each does what its exported function promises, which is told in the public
// header, and throws where the function would catch (errors/Guard.h).

#include <cstdint>

#include "propdata/VeltPropData.h"

namespace velt::propdata {

class EntityLists;

// Of ExcuteIntersect.
bool intersect(TqVector<TqVector<PROPINFO>>& lists, TqVector<PROPINFO>& result, CStdStr<wchar_t>& errorText);
// The same over the lists of harvested entities, of which no records are made but those of the result.
bool intersect(EntityLists& lists, TqVector<PROPINFO>& result, CStdStr<wchar_t>& errorText);

// What a search comes to at a row.
enum class Stop : std::uint8_t { Found, Missing, GoOn };
// Of comparePropInfo, which tells that it goes on by answering false.
Stop compareRows(PROPINFO& first, const PROPINFO& other, CStdStr<wchar_t>& errorText);
// The same for a row of another entity that is known to be the same property, of which this is the value: for one that is no
// element, where the id is hardly ever looked at,
Stop compareValue(PROPINFO& first, const VkDbObjectId& otherId, const VARIANT& value);
// and for an element.
Stop compareElement(PROPINFO& first, IDispatch* other, const VARIANT& value, CStdStr<wchar_t>& errorText);

// Of VariantToColorHelper: whether the value is a color.
bool readColor(const VARIANT& value, VkCmColor& color);

// Of IsDifferentByLayerColors, for two rows, of which the other is on that entity.
bool differByLayerColors(const PROPINFO& first, VkDbObjectId other);

}  // namespace velt::propdata
