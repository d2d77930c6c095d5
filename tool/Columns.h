#pragma once

// Texts in the columns of a terminal.

#include <cstddef>
#include <string>
#include <string_view>

namespace velt::tool {

// How many columns the text takes: two for a wide character such as a Chinese one, none for one that is set on the
// character before it, such as an accent.
std::size_t columns(std::string_view utf8);

// The text with blanks up to that width.
std::string padded(std::string_view utf8, std::size_t width);

// The text, or as much of it as fits before an ellipsis.
std::string shortened(std::string_view utf8, std::size_t width);

}  // namespace velt::tool
