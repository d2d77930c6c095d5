#pragma once

// Why a property cannot be changed, for programs that run in this host and tell people.
//
// The interfaces of automation objects have no room for it: a palette learns that a row is not editable, and finds the
// reasons that hold for whole classes at the end of the help text only. Who knows the host may ask here.

#include <string>

#include "host/com/Guid.h"
#include "host/com/Types.h"
#include "host/database/VkDbObjectId.h"

namespace velt::automation {

// Of the property of that entity, which is one of the class: the sentence that refuses a put of any value now. Empty
// when nothing stands in the way, and for a class, a property or an entity that is not there.
[[nodiscard]] std::wstring readOnlyReason(REFCLSID clsid, DISPID property, VkDbObjectId entity);

}  // namespace velt::automation
