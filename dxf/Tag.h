#pragma once

// One group-code/value pair of a drawing.

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace velt::dxf {

// A pair while a drawing is read. It owns nothing: the offsets are those of the drawing's bytes. A pair's bytes begin with
// the line of its group code and end where the next pair begins, so every byte of the file belongs to exactly one pair.
struct Tag {
  // Of the pair's first byte.
  std::uint32_t begin;
  // Of the value's first byte.
  std::uint32_t offset;
  // Of the value in bytes, without its line end.
  std::uint32_t length;
  // The group code.
  std::int16_t code;
};

// Stands for "no tag" and "no record" wherever an index is stored.
inline constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

// A pair of a record that has been edited. A pair that was read and not replaced keeps pointing at what was read and
// holds no value of its own, so that its bytes are written as they stand in the file.
struct EditedPair {
  int code = 0;
  // The index in the record as it was read; none for an inserted pair.
  std::uint32_t origin = none;
  // Whether it has a new value.
  bool ownsValue = false;
  std::string value;
};

// The text without the blanks around it. Writers pad names and numbers: the file keeps the padding, and whoever reads a
// value ignores it.
[[nodiscard]] constexpr std::string_view trimmed(std::string_view text) noexcept {
  constexpr std::string_view blanks = " \t\r";
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace velt::dxf
