#include "propdata/merge/ListLayout.h"

#include <algorithm>
#include <iterator>

namespace velt::propdata {

ListLayout::Spot ListLayout::at(std::uint32_t place) const {
  const auto after = std::upper_bound(
      expansions_.begin(), expansions_.end(), place,
      [](std::uint32_t wanted, const Expansion& expansion) { return wanted < expansion.first; });
  if (after == expansions_.begin()) return came(place);
  const Expansion& expansion = *std::prev(after);
  return expansion.element(place - expansion.first);
}

ListLayout::Spot ListLayout::nextCandidate(KeyNumber name, KeyNumber property, std::uint32_t from) const {
  const auto row = std::lower_bound(rows_.begin(), rows_.end(), Row{name, from});
  if (row != rows_.end() && row->name == name) return came(row->place);
  // Elements stand after all rows that came with the list.
  const auto element = std::lower_bound(elements_.begin(), elements_.end(), Element{name, property, from});
  const bool isFound = element != elements_.end() && element->name == name && element->property == property;
  return isFound ? at(element->place) : Spot{};
}

ListLayout::Spot ListLayout::nextNamed(KeyNumber name, std::uint32_t from) const {
  const auto row = std::lower_bound(rows_.begin(), rows_.end(), Row{name, from});
  if (row != rows_.end() && row->name == name) return came(row->place);
  const auto expansion = std::find_if(
      expansions_.begin(), expansions_.end(),
      [&](const Expansion& candidate) { return candidate.name == name && candidate.first >= from; });
  return expansion != expansions_.end() ? at(expansion->first) : Spot{};
}

}  // namespace velt::propdata
