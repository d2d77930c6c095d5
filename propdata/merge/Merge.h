#pragma once

// Intersecting the lists of several entities: the rows that all of them have.
//
// The host sees the same calls in the same order as if each list were scanned from its start for each row; the layouts
// only skip rows that such a scan would pass over without a call.
//
// There are two kinds of lists: those of records, which a caller hands in (RecordLists), and those of harvested
// entities, which share the rows of their class (EntityLists). Both offer the merge:
//
//   KeyTable& keys()
//   std::size_t count()                          how many lists there are
//   std::uint32_t lengthOfFirst()
//   PROPINFO rowOfFirst(place)                   a row of the first list, as it came; that list is never changed
//   ListLayout& layout(k)                        of list k, as it is now
//   void noteAlike()                             a search begins: numbers the lists, those that are alike with one number
//   std::uint32_t alike(k)                       the number of list k. Lists with one number that were not read since the
//                                                search began have one layout and rows that are editable alike
//   std::uint32_t alikeCount()                   how many numbers there are, from 0 on
//   std::size_t lastOfAlike(number)              the last list that has it
//   bool isEditable(k, spot)                     of what its layout found there
//   DispatchDynPropSourceNode pair(k, place)
//   Here at(k, spot)                             what stands there in list k and in all that are alike
//   Reading read(k, here, name)                  reads a row that came with the list, whose name key is given, unless
//                                                it is read: its value, or, when it breaks up, how many elements were
//                                                appended
//   Stop compare(row, property, k, here, value, errorText)
//                                                comparePropInfo of the row, whose property key is given, and of one that
//                                                came with the list, which has its name key, its isEditable and this value
//   Stop compareElement(row, property, k, here, element, errorText)
//                                                the same for an element that the row there was broken up into

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "propdata/VeltPropData.h"
#include "propdata/merge/Cores.h"
#include "propdata/merge/KeyTable.h"
#include "propdata/merge/ListLayout.h"
#include "propdata/support/Lists.h"
#include "propdata/typing/Cores.h"

namespace velt::propdata {

inline bool isDynamic(const PROPINFO& row) {
  return row.dispId == dynamicPropertyDispId;
}

// QUIRK(dynamic_rows_read_by_invoke): a dynamic row has its value but not the mark, so the entity's object is asked for
// the member -23; objects place dynamic rows by the weight that they answer for it.
inline void readUnlessRead(PROPINFO& row, TqVector<PROPINFO>& elements) {
  elements.clear();
  if (!row.hasValue) readValue(row, elements);
}

// The first list with every row read, and with the elements of each row that breaks up in the place of the row.
template <class Lists>
std::vector<PROPINFO> expandedFirst(const Lists& lists, bool withOwnPairs) {
  std::vector<PROPINFO> rows;
  rows.reserve(lists.lengthOfFirst());
  TqVector<PROPINFO> elements;
  for (std::uint32_t place = 0; place < lists.lengthOfFirst(); ++place) {
    PROPINFO row = lists.rowOfFirst(place);
    if (withOwnPairs && isDynamic(row))
      mustAppend(row.dynSources, DispatchDynPropSourceNode(row.pDispatch, row.pDynamicProperty));
    readUnlessRead(row, elements);
    if (elements.isEmpty()) {
      rows.push_back(std::move(row));
    } else {
      // QUIRK(partial_elements_replace_their_row): also the elements read before an expansion broke off; palettes show
      // what could be read.
      // QUIRK(value_beside_partial_elements_lost): the row's own value was fetched then, and goes with the row.
      for (PROPINFO& element : writable(elements))
        rows.push_back(std::move(element));
    }
  }
  return rows;
}

// The merge of two or more lists.
template <class Lists>
class Merge {
 public:
  Merge(Lists& lists, CStdStr<wchar_t>& errorText) : lists_(lists), errorText_(errorText) {}

  std::vector<PROPINFO> run() {
    std::vector<PROPINFO> merged;
    for (PROPINFO& row : expandedFirst(lists_, false)) {
      // QUIRK(varying_rows_dropped_on_arrival): a row that comes in with isVaries is not searched for at all.
      if (row.isVaries) continue;
      // QUIRK(dropped_values_not_released): the value of a row that is dropped here is given back by nobody; hosts
      // count on it staying valid.
      if (isInEveryOtherList(row)) merged.push_back(std::move(row));
    }
    return merged;
  }

 private:
  using Pairs = std::vector<DispatchDynPropSourceNode>;
  using Here = typename Lists::Here;

  // The row that is searched for.
  struct Wanted {
    PROPINFO& row;
    KeyNumber name;
    KeyNumber property;
    Pairs pairs;
  };

  bool isInEveryOtherList(PROPINFO& row) {
    // QUIRK(grouped_elements_single_selection_only): the palette edits one polyline's vertices at a time.
    if (row.elementGrouping != 0) return false;
    Wanted wanted{
        row, lists_.keys().numberOf(NameKey::of(row)), lists_.keys().numberOf(PropertyKey::of(row)), {}};
    if (isDynamic(row)) wanted.pairs.emplace_back(row.pDispatch, row.pDynamicProperty);
    ++search_;
    lists_.noteAlike();
    const std::size_t count = lists_.count();
    for (std::size_t k = 1; k < count;) {
      if (row.isVaries && !isDynamic(row)) return isNamedFrom(wanted, k);
      if (!isInAlike(wanted, k, count)) return false;
    }
    if (isDynamic(row)) row.dynSources = appendedOneByOne(std::move(wanted.pairs));
    return true;
  }

  // Where a search begins in all lists of one number, and whether what stands there is as editable as the row.
  struct Beginning {
    // No search has the number 0.
    std::uint64_t search = 0;
    std::uint32_t number = 0;
    bool fits = false;
    ListLayout::Spot spot;
    // What stands there.
    Here here{};
  };

  // In the lists from k on, of a row that varies: nothing is read for it, nor noted, so what holds for one list holds for all
  // that are like it.
  bool isNamedFrom(Wanted& wanted, std::size_t k) {
    for (std::uint32_t number = 0; number < lists_.alikeCount(); ++number) {
      const std::size_t last = lists_.lastOfAlike(number);
      if (last >= k && !isInList(wanted, last, beginning(wanted, last))) return false;
    }
    return true;
  }

  // In list k and those after it that are like it, up to one in which the row turns out to vary; k is then the one after.
  [[gnu::always_inline]] inline bool isInAlike(Wanted& wanted, std::size_t& k, std::size_t count) {
    const Beginning& begin = beginning(wanted, k);
    if (!begin.fits || isDynamic(wanted.row))
      return isInEach(wanted, k, count, begin.spot,
                      [&](std::size_t at) { return stopAt(wanted, at, 0, begin.spot, begin.fits); });
    const Here here = begin.here;
    if (begin.spot.isElement())
      return isInEach(wanted, k, count, begin.spot,
                      [&](std::size_t at) { return compareElement(wanted, at, here, begin.spot); });
    return isInEach(wanted, k, count, begin.spot,
                    [&](std::size_t at) { return compareRead(wanted, at, here); });
  }

  // The same with what the search in a list comes to at the spot. Nearly always it ends there.
  template <class Search>
  [[gnu::always_inline]] inline bool isInEach(Wanted& wanted, std::size_t& k, std::size_t count,
                                              const ListLayout::Spot& spot, Search&& search) {
    const PROPINFO& row = wanted.row;
    const std::uint32_t number = lists_.alike(k);
    const bool variedBefore = row.isVaries;
    std::size_t at = k;
    do {
      const Stop stop = search(at);
      if (stop != Stop::Found && !isInRest(wanted, at, spot, stop)) return false;
      ++at;
    } while (at < count && row.isVaries == variedBefore && lists_.alike(at) == number);
    k = at;
    // From here on only the name key counts.
    if (row.isVaries != variedBefore) ++search_;
    return true;
  }

  bool isInList(Wanted& wanted, std::size_t k, const Beginning& begin) {
    const Stop stop = stopAt(wanted, k, 0, begin.spot, begin.fits);
    return stop == Stop::Found || isInRest(wanted, k, begin.spot, stop);
  }

  // The same after the search stopped at the spot.
  [[gnu::noinline]] bool isInRest(Wanted& wanted, std::size_t k, ListLayout::Spot spot, Stop stop) {
    while (stop == Stop::GoOn) {
      const std::uint32_t from = spot.place + 1;
      spot = next(wanted, lists_.layout(k), from);
      const bool fits = spot.place != ListLayout::none && lists_.isEditable(k, spot) == wanted.row.isEditable;
      stop = stopAt(wanted, k, from, spot, fits);
    }
    return stop == Stop::Found;
  }

  // The scan has passed the places from `from` on. What is found fits if it is as editable as the row that is wanted.
  [[gnu::always_inline]] inline Stop stopAt(Wanted& wanted, std::size_t k, std::uint32_t from,
                                            const ListLayout::Spot& spot, bool fits) {
    const PROPINFO& row = wanted.row;
    if (isDynamic(row)) collectPairs(k, from, spot.place, wanted.pairs);
    if (spot.place == ListLayout::none) return Stop::Missing;
    if (!fits) return Stop::GoOn;
    // QUIRK(varying_rows_need_only_their_key): a row that already varies only has to be there, and is not read;
    // large selections are shown at once because of it.
    if (row.isVaries) return Stop::Found;
    const Here here = lists_.at(k, spot);
    return spot.isElement() ? compareElement(wanted, k, here, spot) : compareRead(wanted, k, here);
  }

  static ListLayout::Spot next(const Wanted& wanted, const ListLayout& layout, std::uint32_t from) {
    return wanted.row.isVaries ? layout.nextNamed(wanted.name, from)
                               : layout.nextCandidate(wanted.name, wanted.property, from);
  }

  // Valid until the next one. Mixed classes follow each other by turns, so some are kept.
  const Beginning& beginning(const Wanted& wanted, std::size_t k) {
    const std::uint32_t number = lists_.alike(k);
    Beginning& known = beginnings_[number % beginnings_.size()];
    if (known.search != search_ || known.number != number) known = beginningNow(wanted, k, number);
    return known;
  }
  [[gnu::noinline]] Beginning beginningNow(const Wanted& wanted, std::size_t k, std::uint32_t number) {
    ListLayout& layout = lists_.layout(k);
    if (layout.start.search != search_) layout.start = {search_, next(wanted, layout, 0)};
    const ListLayout::Spot& spot = layout.start.spot;
    if (spot.place == ListLayout::none) return {search_, number, false, spot};
    const bool fits = lists_.isEditable(k, spot) == wanted.row.isEditable;
    return {search_, number, fits, spot, lists_.at(k, spot)};
  }

  // QUIRK(pairs_of_all_visited_rows): every row that the scan passes gives its pair, not only the one that
  // matches; writers rely on the pairs' order.
  void collectPairs(std::size_t k, std::uint32_t from, std::uint32_t place, Pairs& pairs) {
    const std::uint32_t end = place == ListLayout::none ? lists_.layout(k).length() : place + 1;
    for (std::uint32_t visited = from; visited < end; ++visited)
      pairs.push_back(lists_.pair(k, visited));
  }

  // Of a row that came with the list, which is read now at the latest.
  Stop compareRead(const Wanted& wanted, std::size_t k, const Here& here) {
    const Reading reading = lists_.read(k, here, wanted.name);
    if (reading.value != nullptr)
      return lists_.compare(wanted.row, wanted.property, k, here, *reading.value, errorText_);
    // They are what the list was broken up into last. Comparing changes no list.
    const ListLayout::Expansion& expansion = lists_.layout(k).expansions().back();
    Stop stop = Stop::GoOn;
    for (std::uint32_t i = 0; i < reading.elements && stop == Stop::GoOn; ++i)
      stop = compareElement(wanted, k, here, expansion.element(i));
    return stop;
  }
  // Of an element, which came with its value.
  Stop compareElement(const Wanted& wanted, std::size_t k, const Here& here,
                      const ListLayout::Spot& element) {
    return lists_.compareElement(wanted.row, wanted.property, k, here, element, errorText_);
  }

  Lists& lists_;
  CStdStr<wchar_t>& errorText_;
  std::uint64_t search_ = 0;
  // By some bits of the number.
  std::array<Beginning, 64> beginnings_{};
};

// False, with result left alone, when there is no list.
template <class Lists>
bool mergeInto(TqVector<PROPINFO>& result, Lists& lists, CStdStr<wchar_t>& errorText) {
  if (lists.count() == 0) return false;
  result = appendedOneByOne(lists.count() == 1 ? expandedFirst(lists, true) : Merge(lists, errorText).run());
  return true;
}

}  // namespace velt::propdata
