#pragma once

#include "host/com/IUnknown.h"
#include "host/database/VkDbObjectId.h"

namespace velt::propdata {

// The database id behind an automation object; the null id when it has no IVeltBaseObject or does not tell.
VkDbObjectId entityIdOf(IUnknown* automationObject);

}  // namespace velt::propdata
