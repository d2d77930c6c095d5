#pragma once

// What stands against a row of one entity.

#include <string_view>

#include "palette/Palette.h"

namespace velt::palette {

// Why the entity has no row of that label or name, when its properties could be read: hidden, notShown, notReadable,
// disabled, sourceFailed or unknown. Asks the entity's automation object and its property sources.
Absence::Cause causeOf(const VeltPropData& entry, std::string_view name);

}  // namespace velt::palette
