#pragma once

// The merge as its callers are told that it works: nested scans from the start of every list, one step after
// the other, over plain vectors. Slow on purpose. Reading a value and comparing two rows are the layer's own
// functions, which have tests of their own.

#include <vector>

#include "propdata/VeltPropData.h"

namespace velt::tests {

using PlainList = std::vector<PROPINFO>;

inline PlainList plain(const TqVector<PROPINFO>& list) {
  return {list.begin(), list.end()};
}

inline bool haveSameKey(const PROPINFO& a, const PROPINFO& b) {
  return a.categoryId == b.categoryId && a.categoryName.str() == b.categoryName.str()
         && a.name.str() == b.name.str() && a.isEditable == b.isEditable;
}

inline DispatchDynPropSourceNode pairOf(const PROPINFO& row) {
  return {row.pDispatch, row.pDynamicProperty};
}

inline PlainList expandedReference(PlainList list, bool withOwnPairs) {
  PlainList expanded;
  for (PROPINFO& row : list) {
    if (withOwnPairs && row.dispId == -23) row.dynSources.push_back(pairOf(row));
    TqVector<PROPINFO> elements;
    if (!row.hasValue) getPropValue(row, elements);
    if (elements.isEmpty()) {
      expanded.push_back(row);
    } else {
      for (const PROPINFO& element : plain(elements))
        expanded.push_back(element);
    }
  }
  return expanded;
}

// Whether q is in the list; its pairs of all rows visited on the way are added to pairs.
inline bool findReference(PROPINFO& q, PlainList& list, std::vector<DispatchDynPropSourceNode>& pairs,
                          CStdStr<wchar_t>& errorText) {
  bool found = false;
  if (q.elementGrouping != 0) return false;
  for (std::size_t j = 0; j < list.size(); ++j) {
    if (q.dispId == -23) pairs.push_back(pairOf(list[j]));
    if (!haveSameKey(q, list[j])) continue;
    if (q.isVaries) return true;
    TqVector<PROPINFO> elements;
    if (!list[j].hasValue) getPropValue(list[j], elements);
    if (elements.isEmpty()) {
      if (comparePropInfo(q, list[j], found, errorText)) return found;
      continue;
    }
    list[j].name = L"";
    const std::size_t first = list.size();
    for (const PROPINFO& element : plain(elements))
      list.push_back(element);
    for (std::size_t e = first; e < list.size(); ++e) {
      if (comparePropInfo(q, list[e], found, errorText)) return found;
    }
  }
  return found;
}

// False, and nothing done, without a list.
inline bool mergeReference(std::vector<PlainList>& lists, PlainList& result, CStdStr<wchar_t>& errorText) {
  if (lists.empty()) return false;
  if (lists.size() == 1) {
    result = expandedReference(lists[0], true);
    return true;
  }
  PlainList merged;
  for (PROPINFO q : expandedReference(lists[0], false)) {
    if (q.isVaries) continue;
    std::vector<DispatchDynPropSourceNode> pairs;
    if (q.dispId == -23) pairs.push_back(pairOf(q));
    bool everywhere = true;
    for (std::size_t k = 1; k < lists.size() && everywhere; ++k)
      everywhere = findReference(q, lists[k], pairs, errorText);
    if (!everywhere) continue;
    if (q.dispId == -23) {
      TqVector<DispatchDynPropSourceNode> sources;
      for (const DispatchDynPropSourceNode& pair : pairs)
        sources.push_back(pair);
      q.dynSources = sources;
    }
    merged.push_back(q);
  }
  result = merged;
  return true;
}

}  // namespace velt::tests
