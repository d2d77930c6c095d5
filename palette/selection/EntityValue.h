#pragma once

// The value that one entity of a selection has for a row.

#include <cstddef>
#include <string>

#include "palette/Palette.h"

namespace velt::palette {

// The entity's own value; nothing when it gives none. A dynamic row has one node per entity (see DynamicNodes.h), which
// names the entity's property; `index` is the entity's place in the selection.
Value entityValue(const PROPINFO& row, const VeltPropData& entry, std::size_t index);

// Why it gives none, in the words of the host; empty when it gives one, and when the host says nothing. Of dynamic rows and
// elements no host says it.
std::string whyNoValue(const PROPINFO& row, const VeltPropData& entry);

// The number of the row's property in the entity, which needs an IDispatch: by the name, as a write finds it, because
// entities of another class than the row's may have the property under another number.
HRESULT findProperty(const PROPINFO& row, const VeltPropData& entry, DISPID& dispId);

}  // namespace velt::palette
