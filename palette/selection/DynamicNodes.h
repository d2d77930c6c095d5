#pragma once

// To which properties a merged dynamic row is written.

#include "propdata/VeltPropData.h"

namespace velt::palette {

// The row with one node per entity, that of its own property, in the order of the selection. A merged row also has a
// node for every property that the merge's search passed, and the layer writes to all of them, so a value for one
// attribute would also be written to those before it. Rows that are not dynamic stay as they are. Throws
// std::bad_alloc.
PROPINFO withOneNodePerEntity(const PROPINFO& row);

}  // namespace velt::palette
