#pragma once

// The lists of records that a caller hands to ExcuteIntersect, as the merge sees them. The lists from the second onward
// are changed in place: values are read, names emptied, elements appended.

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "propdata/VeltPropData.h"
#include "propdata/merge/Cores.h"
#include "propdata/merge/LayoutTable.h"
#include "propdata/support/Lists.h"

namespace velt::propdata {

class RecordLists {
 public:
  // The lists must outlive this.
  explicit RecordLists(TqVector<TqVector<PROPINFO>>& lists) : lists_(lists), layouts_(lists.length()) {
    // Several lists are written to, so they are made the caller's own before the host is asked for anything.
    if (lists.length() > 1) static_cast<void>(writable(lists));
  }

  KeyTable& keys() { return keys_; }
  std::size_t count() const { return lists_.length(); }
  std::uint32_t lengthOfFirst() const { return list(0).length(); }
  PROPINFO rowOfFirst(std::uint32_t place) const { return list(0)[place]; }
  ListLayout& layout(std::size_t k);
  // A caller's lists come from anywhere, so each is taken for another.
  void noteAlike() {}
  std::uint32_t alike(std::size_t k) const { return static_cast<std::uint32_t>(k); }
  std::uint32_t alikeCount() const { return lists_.length(); }
  std::size_t lastOfAlike(std::uint32_t number) const { return number; }
  bool isEditable(std::size_t k, const ListLayout::Spot& spot) const {
    return list(k)[spot.place].isEditable;
  }
  DispatchDynPropSourceNode pair(std::size_t k, std::uint32_t place) const;
  using Here = ListLayout::Spot;
  Here at(std::size_t /*k*/, const ListLayout::Spot& spot) const { return spot; }
  Reading read(std::size_t k, const Here& here, KeyNumber name);
  Stop compare(PROPINFO& row, KeyNumber property, std::size_t k, const Here& here, const VARIANT& value,
               CStdStr<wchar_t>& errorText) const;
  Stop compareElement(PROPINFO& row, KeyNumber property, std::size_t k, const Here& here,
                      const ListLayout::Spot& element, CStdStr<wchar_t>& errorText) const;

 private:
  const TqVector<PROPINFO>& list(std::size_t k) const { return std::as_const(lists_).begin()[k]; }
  ListLayout& brokenUp(ListLayout& layout, std::uint32_t place, KeyNumber name, const PROPINFO& row);

  TqVector<TqVector<PROPINFO>>& lists_;
  KeyTable keys_;
  LayoutTable table_{keys_};
  // Null until the first search in a list.
  std::vector<ListLayout*> layouts_;
  // Those of the row that was read last.
  TqVector<PROPINFO> elements_;
};

}  // namespace velt::propdata
