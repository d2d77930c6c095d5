#pragma once

// Plain numbers as texts, and texts as numbers.

#include <optional>
#include <string>
#include <string_view>

#include "palette/Palette.h"

namespace velt::palette {

// What is smaller than this and not 0 has come from rounding in a computation, and is shown as 0.
inline constexpr double leastShown = 1e-12;

// Without blanks and tabs around it.
std::string_view trimmed(std::string_view text);

// With that many decimal places. A number of which these would show nothing but zeros has its first digits instead, and
// so has one that is too long to be written out. Empty for a number that is not one: nobody can tell its value.
std::string decimalText(double number, int places);

// A decimal number with those zeros of its two ends that the style has.
std::string withZeros(std::string text, const NumberStyle& style);

// With all digits that tell it from any other.
std::string exactText(double number);

// The number that is the whole of the text; it may have a sign and an exponent. Nothing for any other text, and for a
// number that is not finite.
std::optional<double> decimalIn(std::string_view text);

// The same without a sign; also 1/2, 3 1/2 and 3-1/2.
std::optional<double> unsignedIn(std::string_view text);

}  // namespace velt::palette
