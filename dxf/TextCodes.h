#pragma once

// Codes inside the wording of TEXT, ATTRIB and MTEXT entities. In other values of a drawing they mean nothing.

#include <string>
#include <string_view>

namespace velt::dxf {

// For showing: %%c %%d %%p become the diameter, degree and plus/minus signs, %%nnn the character with that decimal
// number in ANSI_1252, %%% a percent sign. The codes %%u %%o %%k, which switch lines under, over and through the text,
// are left out. Letters may be upper or lower case; anything else stays.
[[nodiscard]] std::wstring decodePercentCodes(std::wstring_view text);

// Control characters: a caret and the letter (^J is a line end, ^I a tab), and "^ " for the caret itself.
[[nodiscard]] std::wstring decodeCaretCodes(std::wstring_view text);
// The reverse: a caret becomes "^ ", a control character its caret code.
[[nodiscard]] std::wstring encodeCaretCodes(std::wstring_view text);

}  // namespace velt::dxf
