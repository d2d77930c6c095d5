#pragma once

// Where text for people goes: a terminal has a width and colors, a file or a pipe has neither.

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace velt::tool {

struct Terminal {
  // The columns of a line; nothing when lines may have any length.
  std::optional<std::size_t> width{};
  bool hasColor = false;
  // Its lines; nothing where the text is no terminal's.
  std::optional<std::size_t> height{};

  // The line as it fits into the width.
  std::string fitted(std::string_view line) const;
  // For headings, and for what matters less. Unchanged without color.
  std::string bold(std::string_view text) const;
  std::string faint(std::string_view text) const;
};

// The terminal behind a stream: one without a width and colors unless it is the program's standard output and that is
// a terminal. The environment variables NO_COLOR and TERM=dumb turn colors off.
Terminal terminalOf(const std::ostream& out);

}  // namespace velt::tool
