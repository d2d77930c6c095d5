#pragma once

// Cores of this folder that others call. Each does what its exported function promises, which is told in the public
// header, and throws where the function would catch (errors/Guard.h).

#include "propdata/VeltPropData.h"

namespace velt::propdata {

// Of _GetPropertyType.
PropertyKind::Code kindOf(const GUID& clsid, const PROPINFO& prop);

// Asks the host what kindOf would ask of it for a property with this DISPID and value, where the answer is not needed.
void askForKind(DISPID dispId, const VARIANT& value);

// Of SetPropertyWeight.
void setWeight(const GUID& clsid, PROPINFO& prop);

// Of getPropValue.
void readValue(PROPINFO& prop, TqVector<PROPINFO>& elements);

}  // namespace velt::propdata
