#pragma once

// Why an entity does not take a value.

#include <string>

#include "propdata/VeltPropData.h"

namespace velt::palette {

// Puts the value once more and asks the host for the reason, because the layer only says that the value was refused. A
// value that is refused changes nothing. When the host throws, its text is the reason.
std::string reasonOfRefusal(const PROPINFO& row, const VeltPropData& entry, const VARIANT& value);

}  // namespace velt::palette
