#pragma once

// Lines of a modeller's text as drawings write them, each printable character turned into another one.

#include <string>
#include <string_view>

namespace velt::dxf {

// Blanks stay, as do control characters and bytes from 127 on.
[[nodiscard]] std::string decodeModelLine(std::string_view stored);
// The reverse.
[[nodiscard]] std::string encodeModelLine(std::string_view line);

}  // namespace velt::dxf
