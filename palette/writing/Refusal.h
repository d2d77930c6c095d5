#pragma once

// Why an entity does not take a value.

#include <string>

#include "propdata/VeltPropData.h"

namespace velt::palette {

// Puts the value again, which a refusal leaves without effect, and this time asks for the reason, since the layer hands
// on only that there was one. What the host throws is the reason then.
std::string reasonOfRefusal(const PROPINFO& row, const VeltPropData& entry, const VARIANT& value);

}  // namespace velt::palette
