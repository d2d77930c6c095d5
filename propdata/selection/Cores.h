#pragma once

// Cores of this folder that others call. Each does what its exported function promises, which is told in the public
// header, and throws where the function would catch (errors/Guard.h).

#include "propdata/VeltPropData.h"

namespace velt::propdata {

// Of GetSingleEntPropInfo.
bool harvest(VeltPropData* entry, TqVector<PROPINFO>& list, CStdStr<wchar_t>& errorText);

// Of getTqPROPINFOCache.
PropertyListCache& propertyListCache();

}  // namespace velt::propdata
