#pragma once

// Whether a value that a host took is the one that an entity has.

#include "palette/Palette.h"

namespace velt::palette {

// False only where `now` cannot be meant by what was put: hosts round numbers, spell names in their own case, take whole
// turns off angles, and understand texts that stand for numbers or objects.
bool mayMean(const PROPINFO& row, const PlainValue& put, const PlainValue& now);

}  // namespace velt::palette
