#pragma once

// Names of layers, line types, styles and blocks are compared without regard to upper and lower case.

#include <string>
#include <string_view>

namespace velt::database {

// The form that all spellings of a name share: Unicode's simple case folding, without the foldings of Turkic languages.
// It does not depend on the process's locale, so a drawing means the same everywhere, and keeps the length.
[[nodiscard]] std::wstring foldName(std::wstring_view name);

[[nodiscard]] wchar_t foldCharacter(wchar_t character);

[[nodiscard]] bool sameName(std::wstring_view one, std::wstring_view other);

}  // namespace velt::database
