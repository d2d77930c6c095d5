#pragma once

// Between the wide strings of the layer and the UTF-8 of terminals and JSON.

#include <string>
#include <string_view>

namespace velt::tool {

// What is no character of its own (a lone surrogate, a number beyond the last) becomes U+FFFD; so does every
// byte that is no UTF-8.
std::string toUtf8(std::wstring_view text);
std::wstring fromUtf8(std::string_view text);

// On one line of a terminal: line ends, tabs and other control characters become visible or blank.
std::string oneLine(std::wstring_view text);

// Same letters, whatever their case (of ASCII letters).
bool equalIgnoringCase(std::string_view a, std::string_view b);

// Columns that the text takes, counted in characters.
std::size_t columns(std::string_view utf8);
std::string padded(std::string_view utf8, std::size_t width);

}  // namespace velt::tool
