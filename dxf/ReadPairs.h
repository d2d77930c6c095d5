#pragma once

// The pairs of one record as they were read.
//
// A drawing has tens of millions of pairs, so of each one only its group code is kept and where it begins, in 16 bits
// each: the value is in the file's bytes, and its ends are looked for when somebody asks. (Without the code in the table a
// drawing takes an eighth less memory, and a query is a fifth slower: whoever looks for a property passes over others.)

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace velt::dxf {

// Where a pair begins, counted from its record's first byte; and its group code.
struct PairPlace {
  std::uint16_t distance;
  std::int16_t code;
};
static_assert(sizeof(PairPlace) == 4);

// It owns nothing. All functions but size() require an index less than size().
class ReadPairs {
 public:
  // The places of the pairs, and one more that tells where the last pair ends. In a long record each place takes two,
  // the second one with the high half of the distance.
  ReadPairs(const char* bytes, const PairPlace* places, std::uint32_t size, bool isLong) noexcept
      : bytes_(bytes), places_(places), size_(size), isLong_(isLong) {}

  [[nodiscard]] std::uint32_t size() const noexcept { return size_; }
  [[nodiscard]] int code(std::size_t index) const noexcept {
    return places_[isLong_ ? 2 * index : index].code;
  }
  // As it stands in the file, blanks included, without its line end.
  [[nodiscard]] std::string_view value(std::size_t index) const noexcept {
    const char* const begin = bytes_ + distance(index);
    const char* const end = bytes_ + distance(index + 1);
    const char* const value = afterCode(begin, end);
    return {value, static_cast<std::size_t>(withoutLineEnd(value, end) - value)};
  }
  // Everything, with the line of the group code and all line ends.
  [[nodiscard]] std::string_view bytes(std::size_t index) const noexcept {
    return {bytes_ + distance(index), distance(index + 1) - distance(index)};
  }

 private:
  [[nodiscard]] std::uint32_t distance(std::size_t index) const noexcept {
    if (!isLong_) return places_[index].distance;
    return places_[2 * index].distance | (std::uint32_t{places_[2 * index + 1].distance} << 16);
  }

  [[nodiscard]] static const char* afterCode(const char* begin, const char* end) noexcept {
    // Three characters and a line end, as nearly all writers write codes below 1000. Four bytes are always there: a code,
    // its line end, and a zero after the file's last value.
    if (begin[3] == '\n' && begin[2] != '\n' && begin[1] != '\n') return begin + 4;
    return static_cast<const char*>(std::memchr(begin, '\n', static_cast<std::size_t>(end - begin))) + 1;
  }
  [[nodiscard]] static const char* withoutLineEnd(const char* value, const char* end) noexcept {
    // Only the last value of a file may lack a line end, and then a carriage return belongs to it.
    if (end == value || end[-1] != '\n') return end;
    --end;
    return end != value && end[-1] == '\r' ? end - 1 : end;
  }

  const char* bytes_;
  const PairPlace* places_;
  std::uint32_t size_;
  bool isLong_;
};

}  // namespace velt::dxf
