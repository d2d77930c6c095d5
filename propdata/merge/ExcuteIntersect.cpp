// Intersecting the per-entity lists: the rows that all entities have.

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "errors/Guard.h"
#include "propdata/VeltPropData.h"
#include "propdata/merge/Cores.h"
#include "propdata/merge/LayoutTable.h"
#include "propdata/support/Lists.h"
#include "propdata/typing/Cores.h"

using namespace velt::propdata;

namespace {

using Lists = TqVector<TqVector<PROPINFO>>;
using Pairs = std::vector<DispatchDynPropSourceNode>;

bool isDynamic(const PROPINFO& row) {
  return row.dispId == dynamicPropertyDispId;
}

DispatchDynPropSourceNode pairOf(const PROPINFO& row) {
  return {row.pDispatch, row.pDynamicProperty};
}

void readUnlessRead(PROPINFO& row, TqVector<PROPINFO>& elements) {
  elements.clear();
  // QUIRK(dynamic_rows_read_by_invoke): a dynamic row has its value but not the mark, so the entity's object is asked
  // for the member -23; objects place dynamic rows by the weight that they answer for it.
  if (!row.hasValue) readValue(row, elements);
}

// The list with every row read, and with the elements of each row that breaks up in the place of the row.
TqVector<PROPINFO> expanded(const TqVector<PROPINFO>& list, bool withOwnPairs) {
  TqVector<PROPINFO> result;
  reserve(result, list.length());
  TqVector<PROPINFO> elements;
  for (const PROPINFO& unread : list) {
    PROPINFO row(unread);
    if (withOwnPairs && isDynamic(row)) mustAppend(row.dynSources, pairOf(row));
    readUnlessRead(row, elements);
    if (elements.isEmpty()) {
      mustAppend(result, row);
    } else {
      // QUIRK(partial_elements_replace_their_row): also the elements read before an expansion broke off; palettes show
      // what could be read.
      // QUIRK(value_beside_partial_elements_lost): the row's own value was fetched then, and goes with the row.
      reserve(result, result.length() + elements.length());
      result.append(elements);
    }
  }
  return result;
}

void setPairs(PROPINFO& row, const Pairs& pairs) {
  TqVector<DispatchDynPropSourceNode> sources;
  reserve(sources, static_cast<std::uint32_t>(pairs.size()));
  for (const DispatchDynPropSourceNode& pair : pairs)
    sources.append(pair);
  row.dynSources = sources;
}

// The merge of two or more lists. The host sees the same calls in the same order as if each list were scanned from its
// start for each row; the layouts only skip rows that such a scan would pass over without a call.
class Merge {
 public:
  Merge(Lists& lists, CStdStr<wchar_t>& errorText)
      : lists_(writable(lists)), layouts_(lists.length()), errorText_(errorText) {}

  TqVector<PROPINFO> run() {
    TqVector<PROPINFO> candidates = expanded(lists_[0], false);
    // Without grouped elements, which are not searched for: one polyline may have thousands of them.
    elementsOfFirst_ = static_cast<std::uint32_t>(
        std::count_if(candidates.begin(), candidates.end(),
                      [](const PROPINFO& row) { return row.isElement && row.elementGrouping == 0; }));
    TqVector<PROPINFO> merged;
    reserve(merged, candidates.length());
    for (PROPINFO& row : writable(candidates)) {
      // QUIRK(varying_rows_dropped_on_arrival): a row that comes in with isVaries is not searched for at all.
      if (row.isVaries) continue;
      // QUIRK(dropped_values_not_released): the value of a row that is dropped here is given back by nobody; hosts
      // count on it staying valid.
      if (!isInEveryOtherList(row)) continue;
      mustAppend(merged, row);
    }
    return merged;
  }

 private:
  bool isInEveryOtherList(PROPINFO& row) {
    // QUIRK(grouped_elements_single_selection_only): the palette edits one polyline's vertices at a time.
    if (row.elementGrouping != 0) return false;
    Pairs pairs;
    if (isDynamic(row)) pairs.push_back(pairOf(row));
    const KeyNumber sameness = keys_.samenessKey(row);
    const KeyNumber full = keys_.fullKey(sameness, row);
    for (std::size_t k = 1; k < layouts_.size(); ++k) {
      if (!isInList(row, sameness, full, k, pairs)) return false;
    }
    if (isDynamic(row)) setPairs(row, pairs);
    return true;
  }

  bool isInList(PROPINFO& row, KeyNumber sameness, KeyNumber full, std::size_t k, Pairs& pairs) {
    TqVector<PROPINFO>& list = lists_[k];
    ListLayout*& layout = layouts_[k];
    if (layout == nullptr) layout = &table_.of(list);

    bool found = false;
    for (std::uint32_t from = 0;;) {
      const std::uint32_t place =
          row.isVaries ? layout->first(sameness) : layout->nextCandidate(sameness, full, from);
      if (isDynamic(row)) collectPairs(list, from, place, pairs);
      if (place == ListLayout::none) return false;
      // QUIRK(varying_rows_need_only_their_key): a row that already varies only has to be there, and is not read;
      // large selections are shown at once because of it.
      if (row.isVaries) return true;
      if (compareAt(row, list, layout, place, sameness, found)) return found;
      from = place + 1;
    }
  }

  // QUIRK(pairs_of_all_visited_rows): every row that the scan passes gives its pair, not only the one that
  // matches; writers rely on the pairs' order.
  static void collectPairs(const TqVector<PROPINFO>& list, std::uint32_t from, std::uint32_t place,
                           Pairs& pairs) {
    const std::uint32_t end = place == ListLayout::none ? list.length() : place + 1;
    for (std::uint32_t visited = from; visited < end; ++visited)
      pairs.push_back(pairOf(list[visited]));
  }

  // True when the search in this list is over; found then tells how it ended.
  bool compareAt(PROPINFO& row, TqVector<PROPINFO>& list, ListLayout*& layout, std::uint32_t place,
                 KeyNumber sameness, bool& found) {
    PROPINFO& other = writable(list)[place];
    readUnlessRead(other, elements_);
    if (elements_.isEmpty()) return compareRows(row, other, found, errorText_);

    // Without a name the row never matches again.
    other.name = CStdStr<wchar_t>();
    makeRoom(list, *layout);
    layout = &table_.brokenUp(*layout, place, sameness, list[place], elements_);
    const std::size_t firstElement = list.length();
    list.append(std::move(elements_));
    const std::span<PROPINFO> appended = writable(list).subspan(firstElement);
    return std::any_of(appended.begin(), appended.end(),
                       [&](PROPINFO& element) { return compareRows(row, element, found, errorText_); });
  }

  // Makes room for the elements just read. The first time, also for as many more as the first entity has.
  void makeRoom(TqVector<PROPINFO>& list, const ListLayout& layout) {
    const std::uint32_t now = list.length() + elements_.length();
    const std::uint32_t inAll = list.length() + std::min(elementsOfFirst_, list.length());
    if (layout.isUnbroken() && inAll > now && inAll > list.physicalLength()) {
      if (!list.setPhysicalLength(inAll)) throw velt::errors::ReportedShortage();
    } else {
      reserve(list, now);
    }
  }

  std::span<TqVector<PROPINFO>> lists_;
  // Null until the first search in a list.
  std::vector<ListLayout*> layouts_;
  CStdStr<wchar_t>& errorText_;
  KeyTable keys_;
  LayoutTable table_{keys_};
  std::uint32_t elementsOfFirst_ = 0;
  // Those of the row that was read last.
  TqVector<PROPINFO> elements_;
};

}  // namespace

namespace velt::propdata {

bool intersect(TqVector<TqVector<PROPINFO>>& lists, TqVector<PROPINFO>& result, CStdStr<wchar_t>& errorText) {
  if (lists.isEmpty()) return false;
  result = lists.length() == 1 ? expanded(std::as_const(lists)[0], true) : Merge(lists, errorText).run();
  return true;
}

}  // namespace velt::propdata

bool ExcuteIntersect([[maybe_unused]] TqVector<VeltPropData*>& entities, TqVector<TqVector<PROPINFO>>& lists,
                     TqVector<PROPINFO>& result, CStdStr<wchar_t>& errorText, [[maybe_unused]] bool& flag) {
  return velt::errors::guarded(false, errorText, [&] { return intersect(lists, result, errorText); });
}
