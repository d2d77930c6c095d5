#pragma once

// Numbers as drawings write them: independent of the locale, and exact both ways.

#include <charconv>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "dxf/Tag.h"

namespace velt::dxf {

// The shortest digits that read back as the same double, always with a decimal point or an exponent, because readers
// tell reals from integers by it. Throws std::invalid_argument for infinities and NaN: no drawing can hold them.
[[nodiscard]] std::string formatReal(double value);

// Reads what any writer may have written: blanks around it, a plus sign, "1.", ".5", "1e5". False, and the number stays as
// it is, for a text that is anything but one finite number. A number too small for a double reads as zero.
[[nodiscard]] bool readReal(std::string_view text, double& number);
// Not for what reads numbers by the million: an optional number that a function returns goes through memory twice.
[[nodiscard]] inline std::optional<double> parseReal(std::string_view text) {
  double number = 0;
  return readReal(text, number) ? std::optional(number) : std::nullopt;
}

// Reads a hexadecimal number of up to 64 bits, in upper or lower case. Nothing for any other text, the empty one
// included.
[[nodiscard]] std::optional<std::uint64_t> parseHandle(std::string_view text);

// Upper case without leading zeros, as drawings write handles.
[[nodiscard]] std::string formatHandle(std::uint64_t handle);

[[nodiscard]] std::string formatInteger(std::int64_t value);

// Nothing for a text that is anything but one integer, or an integer that the type cannot hold.
template <std::integral Integer>
[[nodiscard]] std::optional<Integer> parseInteger(std::string_view text) {
  text = trimmed(text);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  Integer value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace velt::dxf
