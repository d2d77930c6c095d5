#pragma once

// Names with wildcards.

#include <string_view>

namespace velt::tool {

// Whether the pattern contains a wildcard: * for any characters, ? for any one.
bool hasWildcard(std::string_view pattern);

// Whether the pattern fits the whole text. Upper and lower case do not differ. Both are UTF-8.
bool fits(std::string_view pattern, std::string_view text);

}  // namespace velt::tool
