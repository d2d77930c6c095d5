#include "tool/Columns.h"

#include <utf8proc.h>

#include <algorithm>

namespace velt::tool {

namespace {

struct Character {
  std::size_t bytes;
  std::size_t columns;
};

// What is not UTF-8 counts as one character for each byte.
Character firstOf(std::string_view utf8) {
  utf8proc_int32_t character = 0;
  const utf8proc_ssize_t bytes = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(utf8.data()),
                                                  static_cast<utf8proc_ssize_t>(utf8.size()), &character);
  if (bytes <= 0) return {1, 1};
  return {static_cast<std::size_t>(bytes),
          static_cast<std::size_t>(std::max(utf8proc_charwidth(character), 0))};
}

}  // namespace

std::size_t columns(std::string_view utf8) {
  std::size_t used = 0;
  while (!utf8.empty()) {
    const Character first = firstOf(utf8);
    used += first.columns;
    utf8.remove_prefix(first.bytes);
  }
  return used;
}

std::string padded(std::string_view utf8, std::size_t width) {
  std::string result(utf8);
  const std::size_t used = columns(utf8);
  if (used < width) result.append(width - used, ' ');
  return result;
}

std::string shortened(std::string_view utf8, std::size_t width) {
  if (columns(utf8) <= width) return std::string(utf8);
  if (width == 0) return {};
  std::size_t used = 0;
  std::size_t bytes = 0;
  while (bytes < utf8.size()) {
    const Character next = firstOf(utf8.substr(bytes));
    if (used + next.columns > width - 1) break;
    used += next.columns;
    bytes += next.bytes;
  }
  return std::string(utf8.substr(0, bytes)) + "\u2026";
}

}  // namespace velt::tool
