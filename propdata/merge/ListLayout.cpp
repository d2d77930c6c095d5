#include "propdata/merge/ListLayout.h"

#include <algorithm>

namespace velt::propdata {

std::uint32_t ListLayout::next(const std::vector<Entry>& sorted, KeyNumber key, std::uint32_t from) {
  const auto entry = std::lower_bound(sorted.begin(), sorted.end(), Entry{key, from});
  return entry != sorted.end() && entry->key == key ? entry->place : none;
}

std::uint32_t ListLayout::nextCandidate(KeyNumber sameness, KeyNumber full, std::uint32_t from) const {
  return std::min(next(rows_, sameness, from), next(elements_, full, from));
}

std::uint32_t ListLayout::first(KeyNumber sameness) const {
  if (const std::uint32_t place = next(rows_, sameness, 0); place != none) return place;
  const auto expansion = std::find_if(expansions_.begin(), expansions_.end(),
                                      [&](const Entry& entry) { return entry.key == sameness; });
  return expansion != expansions_.end() ? expansion->place : none;
}

}  // namespace velt::propdata
