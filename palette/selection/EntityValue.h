#pragma once

// What one entity of a selection answers about one row.

#include <cstddef>
#include <string>

#include "propdata/VeltPropData.h"

namespace velt::tool {

// The entity's own value of the merged row, in full precision, for comparing; empty when it gives none. `index` is the
// entity's place in the selection, by which a dynamic row knows its property of each entity.
std::wstring entityValue(const PROPINFO& row, VeltPropData& entry, std::size_t index);

// The same words for a value that is to be written, where that can be told: colors come in as texts and out as objects.
std::wstring comparable(const VARIANT& value);

// Why the entity does not take the value. Puts it again, which a refusal leaves without effect, and this time asks for
// the reason, since the layer hands on only that there was one.
std::string reasonOfRefusal(const PROPINFO& row, VeltPropData& entry, VARIANT& value);

}  // namespace velt::tool
