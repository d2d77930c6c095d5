#include "tool/Progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include "palette/Palette.h"

namespace velt::tool {

Progress::Progress(const std::string& what, std::FILE* terminal)
    : what_(palette::oneLine(palette::fromUtf8(what))),
      terminal_(isatty(fileno(terminal)) != 0 ? terminal : nullptr) {}

Progress::~Progress() {
  if (!shown_.empty()) std::fprintf(terminal_, "\r\033[K");
}

bool Progress::isShown() const {
  return terminal_ != nullptr && Clock::now() - started_ >= std::chrono::seconds(1);
}

void Progress::show(const std::string& text) {
  if (text == shown_) return;
  shown_ = text;
  std::fprintf(terminal_, "\r\033[K%s: %s", what_.c_str(), text.c_str());
  std::fflush(terminal_);
}

void Progress::report(std::uint64_t done, std::uint64_t total) {
  if (total == 0 || !isShown()) return;
  show(fmt::format("{}%", static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(total))));
}

void Progress::count(std::uint64_t done, const char* what) {
  if (isShown()) show(fmt::format("{} {}", done, what));
}

ReadingProgress::ReadingProgress() : progress_("Reading properties") {
  if (!progress_.isOnTerminal()) return;
  watch_.emplace([this](const platform::Progress& progress) {
    progress_.count(progress.valuesRead, "values");
    return true;
  });
}

}  // namespace velt::tool
