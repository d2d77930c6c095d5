#include "tool/Columns.h"

#include <algorithm>

namespace velt::tool {

std::size_t columns(std::string_view utf8) {
  return static_cast<std::size_t>(std::count_if(
      utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string padded(std::string_view utf8, std::size_t width) {
  std::string result(utf8);
  const std::size_t used = columns(utf8);
  if (used < width) result.append(width - used, ' ');
  return result;
}

}  // namespace velt::tool
