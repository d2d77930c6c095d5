#pragma once

// A list beside its layout, for tests of both.

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

#include "propdata/merge/LayoutTable.h"
#include "tests/support/Row.h"

namespace velt::propdata {

class LayoutOfAList : public ::testing::Test {
 protected:
  KeyNumber name(const PROPINFO& row) { return keys.numberOf(NameKey::of(row)); }
  KeyNumber property(const PROPINFO& row) { return keys.numberOf(PropertyKey::of(row)); }
  void build() { layout = &table.of(list); }
  std::uint32_t candidate(const PROPINFO& q, std::uint32_t from) {
    return layout->nextCandidate(name(q), property(q), from).place;
  }
  std::uint32_t named(const PROPINFO& q, std::uint32_t from = 0) {
    return layout->nextNamed(name(q), from).place;
  }
  // The row at `place` becomes elements with these labels at the end of the list.
  void breakUp(std::uint32_t place, std::initializer_list<const wchar_t*> labels) {
    layout = &brokenUp(*layout, list, place, labels);
  }
  // As a list does it: with the known layout when its elements are the known ones, else with one of its own.
  ListLayout& brokenUp(ListLayout& before, TqVector<PROPINFO>& broken, std::uint32_t place,
                       std::initializer_list<const wchar_t*> labels) {
    PROPINFO& row = broken[place];
    const KeyNumber key = name(row);
    TqVector<PROPINFO> elements;
    std::vector<PropertyKey> elementKeys;
    for (const wchar_t* const label : labels) {
      elements.push_back(row);
      elements.last().isElement = true;
      elements.last().displayName = label;
      elementKeys.push_back(PropertyKey::of(elements.last()));
    }
    row.name = L"";
    const ListLayout::Continuation* const known = LayoutTable::known(before, place);
    ListLayout& after = known != nullptr && known->elements == elementKeys
                            ? *known->layout
                            : table.extend(before, place, key, row, elementKeys);
    broken.append(elements);
    return after;
  }

  static constexpr std::uint32_t none = ListLayout::none;
  const toys::Row a = toys::Row(L"A");
  const toys::Row b = toys::Row(L"B");

  KeyTable keys;
  LayoutTable table{keys};
  ListLayout* layout = nullptr;
  TqVector<PROPINFO> list;
};

}  // namespace velt::propdata
