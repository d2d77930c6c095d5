#pragma once

// What is known of an entity beside its properties, as it is named where names of properties stand: @handle, @class,
// @type, @layer, @layout and @block.

#include <string>
#include <string_view>

#include "host/database/VkDbObjectId.h"

namespace velt::tool {

// Upper and lower case do not differ.
bool isFactName(std::string_view name);

// `name` is one of the above. @layout is the name of the layout whose entity it is ("Model" in model space), @block that
// of the block in whose definition it stands; each is empty for the others.
std::string factOf(VkDbObjectId entity, std::string_view name);

}  // namespace velt::tool
