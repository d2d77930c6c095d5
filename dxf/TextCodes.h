#pragma once

// Codes inside the wording of TEXT, ATTRIB and MTEXT entities. Other values of a drawing do not know them.

#include <string>
#include <string_view>

namespace velt::dxf {

// For showing: %%c %%d %%p become the diameter, degree and plus/minus signs, %%nnn the character of that decimal
// number (as in ANSI_1252), %%% a percent sign; the switches %%u %%o %%k for lines under, over and through go. What is
// no such code stays. The letters may be upper or lower case.
[[nodiscard]] std::wstring decodePercentCodes(std::wstring_view text);

// Control characters: a caret and the letter (^J is a line end, ^I a tab), and "^ " for the caret itself.
[[nodiscard]] std::wstring decodeCaretCodes(std::wstring_view text);
// The reverse: a caret becomes "^ ", a control character its caret code.
[[nodiscard]] std::wstring encodeCaretCodes(std::wstring_view text);

}  // namespace velt::dxf
