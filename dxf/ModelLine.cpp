#include "dxf/ModelLine.h"

namespace velt::dxf {
namespace {

// Turning twice gives the character back.
char turned(char c) {
  return c > ' ' && c < '\x7f' ? static_cast<char>('!' + '~' - c) : c;
}

}  // namespace

std::string decodeModelLine(std::string_view stored) {
  std::string line;
  line.reserve(stored.size());
  for (std::size_t i = 0; i < stored.size(); ++i) {
    line += turned(stored[i]);
    // A caret would begin a caret code, so it is followed by a blank that means nothing.
    if (stored.substr(i).starts_with("^ ")) ++i;
  }
  return line;
}

std::string encodeModelLine(std::string_view line) {
  std::string stored;
  stored.reserve(line.size());
  for (const char c : line) {
    stored += turned(c);
    if (stored.back() == '^') stored += ' ';
  }
  return stored;
}

}  // namespace velt::dxf
