#pragma once

// Which properties a merged dynamic row is written to.

#include "propdata/VeltPropData.h"

namespace velt::palette {

// The row with one node per entity, that of its own property, in the order of the selection. A merged row also names
// every property that the search for it came past, and the layer writes to all of them: a value meant for one attribute
// would end in those before it. Rows that are not dynamic stay as they are. Throws std::bad_alloc.
PROPINFO withOneNodePerEntity(const PROPINFO& row);

}  // namespace velt::palette
