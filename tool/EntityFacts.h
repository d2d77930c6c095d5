#pragma once

// What is known of an entity beside its properties, as it is named where names of properties stand: @handle, @class,
// @type, @layer, @layout and @block.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "host/database/VkDbObjectId.h"

namespace velt::tool {

inline constexpr std::array<std::string_view, 6> factNames{"@handle", "@class",  "@type",
                                                           "@layer",  "@layout", "@block"};

// Upper and lower case do not differ.
bool isFactName(std::string_view name);

// `name` is one of the above. @layout is the name of the layout whose entity it is ("Model" in model space), @block that
// of the block in whose definition it stands; each is empty for the others.
std::string factOf(VkDbObjectId entity, std::string_view name);

// Of a name that no entity has: "; did you mean Radius?", with what is like it among the properties' names, or among the
// above where it begins as they do; empty when nothing is.
std::string didYouMeanOf(const std::string& name, const std::vector<std::string>& properties);

}  // namespace velt::tool
