#pragma once

// How broad letters are: an estimate, since the fonts of the drawing may not be there, nor those of whoever shows it.

#include <string_view>

namespace velt::view {

// How tall capital letters are, relative to the size by which fonts are chosen.
inline constexpr double capitalHeight = 0.716;

// In heights of capital letters.
[[nodiscard]] double lengthOf(std::wstring_view text);

}  // namespace velt::view
