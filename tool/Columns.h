#pragma once

// Texts in the columns of a terminal.

#include <cstddef>
#include <string>
#include <string_view>

namespace velt::tool {

// How many columns the text takes: one for each character.
std::size_t columns(std::string_view utf8);
std::string padded(std::string_view utf8, std::size_t width);

}  // namespace velt::tool
