#include "tool/Progress.h"

#include <unistd.h>

#include "palette/Palette.h"

namespace velt::tool {

Progress::Progress(const std::string& what, std::FILE* terminal)
    : what_(palette::oneLine(palette::fromUtf8(what))),
      terminal_(isatty(fileno(terminal)) != 0 ? terminal : nullptr) {}

Progress::~Progress() {
  if (shownPercent_ >= 0) std::fprintf(terminal_, "\r\033[K");
}

void Progress::report(std::uint64_t done, std::uint64_t total) {
  if (terminal_ == nullptr || total == 0) return;
  if (Clock::now() - started_ < std::chrono::seconds(1)) return;
  const int percent = static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(total));
  if (percent == shownPercent_) return;
  shownPercent_ = percent;
  std::fprintf(terminal_, "\r\033[K%s: %d%%", what_.c_str(), percent);
  std::fflush(terminal_);
}

}  // namespace velt::tool
