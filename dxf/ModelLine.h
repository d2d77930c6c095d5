#pragma once

// The text of a solid modeller, line by line. Drawings write it with each printable character turned into another one.

#include <string>
#include <string_view>

namespace velt::dxf {

// Blanks, control characters and bytes from 127 on are not turned.
[[nodiscard]] std::string decodeModelLine(std::string_view stored);
[[nodiscard]] std::string encodeModelLine(std::string_view line);

}  // namespace velt::dxf
