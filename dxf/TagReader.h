#pragma once

// From a drawing's bytes to its group-code/value pairs.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "dxf/Tag.h"

namespace velt::dxf {

// Called now and then with the number of bytes read, and once at the end. It may throw to give up: the exception leaves
// the call that reads.
using Progress = std::function<void(std::uint64_t bytesDone, std::uint64_t bytesTotal)>;

struct TagList {
  std::vector<Tag> tags;
  // Where the first pair begins. A byte-order mark may stand before it.
  std::uint32_t begin = 0;
  // Where the last pair ends. What follows EOF is kept and not looked at.
  std::uint32_t end = 0;
};

// The largest drawing that 32-bit offsets can address, in bytes.
inline constexpr std::uint64_t maximumDrawingSize = 0xFFFF'FFFE;

// Reads up to EOF, or to the end of the bytes when EOF is missing. The offsets are valid for these very bytes. How
// much memory is taken depends on the number of bytes alone, never on a count that a drawing states. Throws Error,
// naming `file` and the line, for a pair that is cut off, for a line that should hold a group code and does not, and
// for everything that is not a drawing in text form.
[[nodiscard]] TagList readTags(const std::string& bytes, const std::string& file,
                               const Progress& progress = {});

}  // namespace velt::dxf
