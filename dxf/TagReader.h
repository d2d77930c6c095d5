#pragma once

// From a drawing's bytes to its group-code/value pairs.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "dxf/Tag.h"

namespace velt::dxf {

// Called now and then with the number of bytes read, and once at the end. It may throw to give up: the exception leaves
// the call that reads.
using Progress = std::function<void(std::uint64_t bytesDone, std::uint64_t bytesTotal)>;

// The largest drawing that 32-bit offsets can address, in bytes.
inline constexpr std::uint64_t maximumDrawingSize = 0xFFFF'FFFE;

// Goes through a drawing from pair to pair, up to EOF, or to the end of the bytes when EOF is missing. Keeps references
// to what it is given.
class TagReader {
 public:
  // Throws Error, naming `file`, for everything that is not a drawing in text form.
  TagReader(const std::string& bytes, const std::string& file, const Progress& progress);

  // The next pair; nothing after the last one. Throws Error, naming `file` and the line, for a pair that is cut off and
  // for a line that should hold a group code and does not.
  [[nodiscard]] std::optional<Tag> next();

  // Where the next pair begins; in the end, where the last pair ends: what follows EOF is kept and not looked at. A
  // byte-order mark may stand before the first pair.
  [[nodiscard]] std::uint32_t position() const noexcept { return offsetOf(next_); }

 private:
  [[nodiscard]] std::string_view rest() const { return {next_, static_cast<std::size_t>(last_ - next_)}; }
  [[nodiscard]] std::uint32_t offsetOf(const char* at) const noexcept {
    return static_cast<std::uint32_t>(at - first_);
  }
  [[nodiscard]] std::uint64_t size() const { return static_cast<std::uint64_t>(last_ - first_); }

  void refuseOtherFormats() const;
  std::optional<std::int16_t> readCode();
  [[nodiscard]] bool onlyBlanksLeft() const;
  [[noreturn]] void fail(const char* at, const std::string& message) const;
  [[noreturn]] void failAtCode(const char* begin) const;

  const std::string& file_;
  const Progress& progress_;
  const char* const first_;
  const char* const last_;
  const char* next_;
  const char* reportAt_;
  bool isOver_ = false;
};

}  // namespace velt::dxf
