#pragma once

// One group-code/value pair of a drawing.

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

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

// The text that takes the place of a value, or none. A copy has a text of its own.
class NewValue {
 public:
  NewValue() = default;
  explicit NewValue(std::string_view text) : text_(std::make_unique<std::string>(text)) {}
  NewValue(const NewValue& other)
      : text_(other.text_ == nullptr ? nullptr : std::make_unique<std::string>(*other.text_)) {}
  NewValue(NewValue&&) noexcept = default;
  NewValue& operator=(NewValue other) noexcept {
    text_ = std::move(other.text_);
    return *this;
  }
  ~NewValue() = default;

  [[nodiscard]] bool isThere() const noexcept { return text_ != nullptr; }
  // Requires that there is one.
  [[nodiscard]] std::string_view text() const noexcept { return *text_; }

 private:
  std::unique_ptr<std::string> text_;
};

// A pair of a record that has been edited. A pair that was read and not replaced keeps pointing at what was read and
// holds no value of its own, so that its bytes are written as they stand in the file.
//
// Small, because a write to a whole drawing edits every record, and of each only a pair or two get a value.
struct EditedPair {
  std::int16_t code = 0;
  // The index in the record as it was read; none for an inserted pair.
  std::uint32_t origin = none;
  NewValue value{};
};
static_assert(sizeof(EditedPair) == 16);

// The text without the blanks around it. Writers pad names and numbers: the file keeps the padding, and whoever reads a
// value ignores it.
[[nodiscard]] constexpr std::string_view trimmed(std::string_view text) noexcept {
  // Called for each value that is read; the library's functions look every character up in a list.
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
  while (!text.empty() && isBlank(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back()))
    text.remove_suffix(1);
  return text;
}

}  // namespace velt::dxf
