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
#include <vector>

#include "propdata/merge/KeyTable.h"
#include "propdata/merge/ListLayout.h"

namespace velt::propdata {

class LayoutTable {
 public:
  explicit LayoutTable(KeyTable& keys) : keys_(keys) {}

  // The layout of a list of which no row is broken up yet.
  ListLayout& of(const TqVector<PROPINFO>& list);

  // The layout after the row at a place was broken up. The row has lost its name already, `before` is its sameness
  // key from before that; the elements are going to stand at the end of the list. Labels that elements of other
  // lists have are shared from here on.
  ListLayout& brokenUp(ListLayout& layout, std::uint32_t place, KeyNumber before, const PROPINFO& row,
                       TqVector<PROPINFO>& elements);

 private:
  struct KnownList {
    std::vector<SamenessKey> rows;
    ListLayout* layout = nullptr;

    bool isLike(const TqVector<PROPINFO>& list) const;
  };

  ListLayout& build(const TqVector<PROPINFO>& list);
  ListLayout& extend(const ListLayout& layout, std::uint32_t place, KeyNumber before, const PROPINFO& row,
                     const TqVector<PROPINFO>& elements);

  KeyTable& keys_;
  std::deque<ListLayout> layouts_;
  // By the first row's name, as a shared string.
  std::array<KnownList, 64> known_;
};

}  // namespace velt::propdata
