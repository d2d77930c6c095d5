#include <fmt/format.h>

#include <algorithm>

#include "palette/Palette.h"

namespace velt::palette {

std::string_view nameOf(Fate fate) {
  switch (fate) {
    case Fate::changed:
      return "changed";
    case Fate::unchanged:
      return "unchanged";
    case Fate::locked:
      return "locked";
    case Fate::skipped:
      return "skipped";
    case Fate::refused:
      return "refused";
    case Fate::notReached:
      return "not reached";
  }
  return "";
}

std::size_t Report::count(Fate fate) const {
  return static_cast<std::size_t>(std::count(fates.begin(), fates.end(), fate));
}

std::string Report::summary() const {
  std::string text;
  for (const Fate fate : allFates) {
    if (count(fate) > 0) text += fmt::format("{}{} {}", text.empty() ? "" : ", ", count(fate), nameOf(fate));
  }
  return text;
}

}  // namespace velt::palette
