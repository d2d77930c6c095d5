#pragma once

// From a drawing's bytes to its group-code/value pairs.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "dxf/Tag.h"

namespace velt::dxf {

// Told now and then how many bytes are read, and once at the end. It may throw to give up: the exception passes through.
using Progress = std::function<void(std::uint64_t bytesDone, std::uint64_t bytesTotal)>;

struct TagList {
  std::vector<Tag> tags;
  // Of the first pair; what stands before it is a byte-order mark.
  std::uint32_t begin = 0;
  // Of the last pair; what stands behind it (after EOF) is kept and not looked at.
  std::uint32_t end = 0;
};

// Largest drawing that 32-bit offsets can address.
inline constexpr std::uint64_t maximumDrawingSize = 0xFFFF'FFFE;

// Reads up to EOF, or to the end of the bytes when EOF is missing. The offsets are valid for exactly these bytes.
// Memory follows from the number of bytes alone, never from a count that stands in them.
// Throws Error, naming `file` and the line, for a pair that is cut off, a line that should hold a group code and does
// not, and everything that is no text drawing at all.
[[nodiscard]] TagList readTags(const std::string& bytes, const std::string& file,
                               const Progress& progress = {});

}  // namespace velt::dxf
