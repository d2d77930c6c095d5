#pragma once

// Names with wildcards: * stands for any characters, ? for any one.

#include <string_view>

namespace velt::tool {

// Whether the pattern fits the whole text. Upper and lower case do not differ. Both are UTF-8.
bool fits(std::string_view pattern, std::string_view text);

}  // namespace velt::tool
