#include "tool/Terminal.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "tool/Columns.h"

namespace velt::tool {

namespace {

constexpr winsize unknownTerminal{.ws_row = 24, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};

winsize sizeOfStandardOutput() {
  winsize size{};
  const bool isKnown = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0;
  return {.ws_row = isKnown && size.ws_row > 0 ? size.ws_row : unknownTerminal.ws_row,
          .ws_col = isKnown && size.ws_col > 0 ? size.ws_col : unknownTerminal.ws_col,
          .ws_xpixel = 0,
          .ws_ypixel = 0};
}

bool wantsColor() {
  const char* const noColor = std::getenv("NO_COLOR");
  const char* const kind = std::getenv("TERM");
  const bool isForbidden = noColor != nullptr && *noColor != '\0';
  return !isForbidden && kind != nullptr && std::string_view(kind) != "dumb";
}

std::string styled(std::string_view text, int style) {
  return fmt::format("\033[{}m{}\033[0m", style, text);
}

}  // namespace

std::string Terminal::fitted(std::string_view line) const {
  return width ? shortened(line, *width) : std::string(line);
}

std::string Terminal::bold(std::string_view text) const {
  return hasColor ? styled(text, 1) : std::string(text);
}

std::string Terminal::faint(std::string_view text) const {
  return hasColor ? styled(text, 2) : std::string(text);
}

Terminal terminalOf(const std::ostream& out) {
  const bool isTerminal = out.rdbuf() == std::cout.rdbuf() && isatty(STDOUT_FILENO) != 0;
  if (!isTerminal) return {};
  const winsize size = sizeOfStandardOutput();
  return {.width = size.ws_col, .hasColor = wantsColor(), .height = size.ws_row};
}

}  // namespace velt::tool
