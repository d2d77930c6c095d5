#include "tool/Patterns.h"

#include "embedded/database/NameFolding.h"
#include "palette/Palette.h"

namespace velt::tool {

namespace {

std::wstring folded(std::string_view text) {
  return database::foldName(palette::fromUtf8(text));
}

}  // namespace

bool fits(std::string_view pattern, std::string_view text) {
  const std::wstring wanted = folded(pattern);
  const std::wstring given = folded(text);
  constexpr std::size_t none = std::wstring::npos;
  std::size_t p = 0;
  std::size_t t = 0;
  // Where to go on when what follows the last * does not fit: the * then stands for one character more.
  std::size_t afterStar = none;
  std::size_t retry = 0;
  while (t < given.size()) {
    if (p < wanted.size() && wanted[p] == L'*') {
      afterStar = ++p;
      retry = t;
    } else if (p < wanted.size() && (wanted[p] == L'?' || wanted[p] == given[t])) {
      ++p;
      ++t;
    } else if (afterStar != none) {
      p = afterStar;
      t = ++retry;
    } else {
      return false;
    }
  }
  return wanted.find_first_not_of(L'*', p) == none;
}

}  // namespace velt::tool
