#pragma once

// A list beside its layout, for tests of both.

#include <gtest/gtest.h>

#include <initializer_list>

#include "propdata/merge/LayoutTable.h"
#include "tests/support/Row.h"

namespace velt::propdata {

class LayoutOfAList : public ::testing::Test {
 protected:
  KeyNumber sameness(const PROPINFO& row) { return keys.samenessKey(row); }
  KeyNumber full(const PROPINFO& row) { return keys.fullKey(keys.samenessKey(row), row); }
  void build() { layout = &table.of(list); }
  std::uint32_t candidate(const PROPINFO& q, std::uint32_t from) {
    return layout->nextCandidate(sameness(q), full(q), from);
  }
  std::uint32_t first(const PROPINFO& q) { return layout->first(sameness(q)); }
  // The row at `place` becomes elements with these labels at the end of the list.
  void breakUp(std::uint32_t place, std::initializer_list<const wchar_t*> labels) {
    layout = &brokenUp(*layout, list, place, labels);
  }
  ListLayout& brokenUp(ListLayout& before, TqVector<PROPINFO>& broken, std::uint32_t place,
                       std::initializer_list<const wchar_t*> labels) {
    PROPINFO& row = broken[place];
    const KeyNumber key = sameness(row);
    TqVector<PROPINFO> elements;
    for (const wchar_t* const label : labels) {
      elements.push_back(row);
      elements.last().isElement = true;
      elements.last().displayName = label;
    }
    row.name = L"";
    ListLayout& after = table.brokenUp(before, place, key, row, elements);
    broken.append(elements);
    return after;
  }

  KeyTable keys;
  LayoutTable table{keys};
  ListLayout* layout = nullptr;
  TqVector<PROPINFO> list;
};

}  // namespace velt::propdata
