#pragma once

// Lists in options. All options that take several names share one rule: names are separated by commas, an option may
// be repeated, and a comma that belongs to a name is written \, .

#include <string>
#include <string_view>
#include <vector>

namespace velt::tool {

// Blanks around a name do not count, and empty names are left out.
std::vector<std::string> splitList(std::string_view text);

}  // namespace velt::tool
