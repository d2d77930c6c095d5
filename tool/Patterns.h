#pragma once

// Names with wildcards, and names that were probably meant.

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velt::tool {

// Whether the pattern contains a wildcard: * for any characters, ? for any one.
bool hasWildcard(std::string_view pattern);

// Whether the pattern fits the whole text. Upper and lower case do not differ. Both are UTF-8.
bool fits(std::string_view pattern, std::string_view text);

// The few of the names that are most like the one that was written, best first; none when none is like it.
std::vector<std::string> namesLike(std::string_view written, std::span<const std::string> names);

// "; did you mean A or B?" of those names, or, when there are none, what `otherwise` says.
std::string didYouMean(std::string_view written, std::span<const std::string> names,
                       std::string_view otherwise = {});

}  // namespace velt::tool
