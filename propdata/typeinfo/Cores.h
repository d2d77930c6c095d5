#pragma once

// Cores of this folder that others call. Each does what its exported function promises, which is told in the public
// header, and throws where the function would catch (errors/Guard.h).

#include "propdata/VeltPropData.h"

namespace velt::propdata {

// Of GetPropTypeInfo.
bool listProperties(const VeltPropData& data, TqVector<PROPINFO>& props, CStringArray& putNames,
                    CStdStr<wchar_t>& errorText);

// Of GetCategoryInfo.
bool findCategory(const VeltPropData& data, DISPID dispId, int& categoryId, CStdStr<wchar_t>& categoryName,
                  CStdStr<wchar_t>& errorText);

// Of NameToUserdefinedType.
PropertyKind::Code kindOfTypeName(const wchar_t* name);

// Of GetVariantTypeInfo.
bool listElements(PROPINFO& info, TqVector<PROPINFO>& out, CStdStr<wchar_t>& errorText);

}  // namespace velt::propdata
