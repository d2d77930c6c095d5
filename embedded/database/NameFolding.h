#pragma once

// Names of layers, line types, styles and blocks are the same when they differ in case only.

#include <string>
#include <string_view>

namespace velt::database {

// The name in the one form that all its spellings share: Unicode's simple case folding, without the foldings of
// Turkic languages. Independent of the process's locale, so that a drawing means the same everywhere. Never changes
// the length.
[[nodiscard]] std::wstring foldName(std::wstring_view name);

[[nodiscard]] wchar_t foldCharacter(wchar_t character);

[[nodiscard]] bool sameName(std::wstring_view one, std::wstring_view other);

}  // namespace velt::database
