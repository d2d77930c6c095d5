#pragma once

// Owns the layouts of one merge.
//
// Lists of one class are laid out alike, and still are after the same rows of them were broken up into the
// same elements. So all such lists share their layouts, which never change: a list whose row is broken up
// goes on with another layout, the same one as the lists before it. Lists that are unlike all others get
// layouts of their own, at the cost of building them.

#include <array>
#include <cstdint>
#include <deque>
#include <span>
#include <vector>

#include "propdata/merge/KeyTable.h"
#include "propdata/merge/ListLayout.h"

namespace velt::propdata {

class LayoutTable {
 public:
  explicit LayoutTable(KeyTable& keys) : keys_(keys) {}

  // A layout of its own for rows of which none is broken up yet. `properties` are their property keys, where these are
  // the same in all lists that will have the layout, else nothing.
  ListLayout& build(std::span<const PROPINFO> rows, std::vector<KeyNumber> properties = {});
  // The same, mostly shared with earlier lists that have the same name keys: those of dynamic rows have texts of their
  // own, but are alike for all entities.
  ListLayout& of(const TqVector<PROPINFO>& list);

  // What came of the row at this place in the first list with this layout in which it was broken up; null when there
  // was none yet. Valid until the next extend().
  static const ListLayout::Continuation* known(const ListLayout& layout, std::uint32_t place) {
    for (const ListLayout::Continuation& known : layout.continuations_) {
      if (known.brokenUp == place) return &known;
    }
    return nullptr;
  }
  // The layout after the row at this place was broken up into other elements than the known ones. `row` is the row,
  // with or without its name; `name` is its name key from before it lost it.
  ListLayout& extend(ListLayout& layout, std::uint32_t place, KeyNumber name, const PROPINFO& row,
                     std::vector<PropertyKey> elements);

 private:
  struct KnownList {
    std::vector<NameKey> rows;
    ListLayout* layout = nullptr;

    bool isLike(const TqVector<PROPINFO>& list) const;
  };

  KeyTable& keys_;
  std::deque<ListLayout> layouts_;
  // By the first row's name.
  std::array<KnownList, 64> known_;
};

}  // namespace velt::propdata
