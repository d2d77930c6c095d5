#pragma once

// What one entity of a selection answers about one row.

#include <cstddef>

#include "palette/Palette.h"

namespace velt::palette {

// The entity's own value; nothing when it gives none. `row` has one node per entity (see DynamicNodes.h), by which a
// dynamic row knows its property of each; `index` is the entity's place in the selection.
Value entityValue(const PROPINFO& row, const VeltPropData& entry, std::size_t index);

}  // namespace velt::palette
