#include <algorithm>
#include <cwctype>
#include <numeric>
#include <utility>

#include "palette/Palette.h"

namespace velt::palette {

namespace {

// Letters that the process's locale has no other case for differ by one step, which is near enough.
std::wstring folded(std::string_view text) {
  std::wstring wide = fromUtf8(text);
  for (wchar_t& c : wide)
    c = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(c)));
  return wide;
}

// How many characters must be inserted, removed, replaced or swapped with the next to make one text of the other.
std::size_t distance(std::wstring_view a, std::wstring_view b) {
  std::vector<std::size_t> beforeLast(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1] ? 1 : 0)});
      const bool isSwapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (isSwapped) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
    std::swap(beforeLast, last);
    std::swap(last, row);
  }
  return last[b.size()];
}

}  // namespace

std::vector<std::string> namesLike(std::string_view written, std::span<const std::string> names) {
  const std::wstring wanted = folded(written);
  const std::size_t farthest = std::max<std::size_t>(1, wanted.size() / 3);
  std::vector<std::pair<std::size_t, std::string>> found;
  for (const std::string& name : names) {
    const std::wstring given = folded(name);
    const bool isPart = wanted.size() > 2 && given.find(wanted) != std::wstring::npos;
    const std::size_t steps = distance(wanted, given);
    if (steps <= farthest || isPart) found.emplace_back(std::min(steps, farthest + 1), name);
  }
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  constexpr std::size_t mostNames = 3;
  std::vector<std::string> nearest;
  for (std::size_t i = 0; i < found.size() && i < mostNames; ++i)
    nearest.push_back(std::move(found[i].second));
  return nearest;
}

std::string didYouMean(std::string_view written, std::span<const std::string> names,
                       std::string_view otherwise) {
  const std::vector<std::string> nearest = namesLike(written, names);
  if (nearest.empty()) return std::string(otherwise);
  std::string text = "; did you mean ";
  for (std::size_t i = 0; i < nearest.size(); ++i) {
    if (i > 0) text += i + 1 == nearest.size() ? " or " : ", ";
    text += nearest[i];
  }
  return text + "?";
}

}  // namespace velt::palette
