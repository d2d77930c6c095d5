#include "propdata/merge/LayoutTable.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <utility>

#include "propdata/support/Lists.h"

namespace velt::propdata {

namespace {

// Lists that come from one cached list share its strings, so they are seen to be alike without comparing characters.
// Lists whose strings are equal but not shared count as unlike.
bool hasSameStrings(const SamenessKey& key, const PROPINFO& row) {
  return key.name.sharesWith(row.name) && key.categoryName.sharesWith(row.categoryName)
         && key.categoryId == row.categoryId && key.isEditable == row.isEditable;
}

bool hasKey(const PropertyKey& key, const PROPINFO& row) {
  return key.hasChoices == row.hasChoices && key.isElement == row.isElement
         && key.displayName == row.displayName;
}

}  // namespace

bool LayoutTable::KnownList::isLike(const TqVector<PROPINFO>& list) const {
  return layout != nullptr && std::equal(rows.begin(), rows.end(), list.begin(), list.end(), hasSameStrings);
}

ListLayout& LayoutTable::of(const TqVector<PROPINFO>& list) {
  const wchar_t* const firstName = list.isEmpty() ? nullptr : list[0].name.c_str();
  KnownList& known =
      known_[std::hash<const wchar_t*>()(firstName) / alignof(std::max_align_t) % known_.size()];
  if (!known.isLike(list)) {
    known.layout = nullptr;
    known.rows.clear();
    std::transform(list.begin(), list.end(), std::back_inserter(known.rows), SamenessKey::of);
    known.layout = &build(list);
  }
  return *known.layout;
}

ListLayout& LayoutTable::build(const TqVector<PROPINFO>& list) {
  ListLayout& layout = layouts_.emplace_back();
  layout.length_ = list.length();
  layout.rows_.reserve(list.length());
  for (std::uint32_t place = 0; place < list.length(); ++place)
    layout.rows_.push_back({keys_.samenessKey(list[place]), place});
  std::sort(layout.rows_.begin(), layout.rows_.end());
  return layout;
}

ListLayout& LayoutTable::brokenUp(ListLayout& layout, std::uint32_t place, KeyNumber before,
                                  const PROPINFO& row, TqVector<PROPINFO>& elements) {
  auto& continuations = layout.continuations_;
  const auto known = std::find_if(continuations.begin(), continuations.end(),
                                  [&](const auto& continuation) { return continuation.brokenUp == place; });
  if (known == continuations.end()) {
    ListLayout& extended = extend(layout, place, before, row, elements);
    std::vector<PropertyKey> keys;
    std::transform(elements.begin(), elements.end(), std::back_inserter(keys), PropertyKey::of);
    continuations.push_back({place, std::move(keys), &extended});
    return extended;
  }
  if (!std::equal(known->elements.begin(), known->elements.end(), elements.begin(), elements.end(), hasKey)) {
    return extend(layout, place, before, row, elements);
  }
  for (std::uint32_t i = 0; PROPINFO & element : writable(elements))
    element.displayName = known->elements[i++].displayName;
  return *known->layout;
}

ListLayout& LayoutTable::extend(const ListLayout& layout, std::uint32_t place, KeyNumber before,
                                const PROPINFO& row, const TqVector<PROPINFO>& elements) {
  using Entry = ListLayout::Entry;
  ListLayout& extended = layouts_.emplace_back();
  extended.length_ = layout.length_ + elements.length();

  extended.rows_ = layout.rows_;
  const auto replace = [&](Entry from, Entry to) {
    auto& rows = extended.rows_;
    rows.erase(std::lower_bound(rows.begin(), rows.end(), from));
    rows.insert(std::lower_bound(rows.begin(), rows.end(), to), to);
  };
  replace({before, place}, {keys_.samenessKey(row), place});

  extended.elements_ = layout.elements_;
  const auto sortedElements = static_cast<std::ptrdiff_t>(extended.elements_.size());
  for (std::uint32_t element = layout.length_; const PROPINFO& made : elements)
    extended.elements_.push_back({keys_.fullKey(before, made), element++});
  std::sort(extended.elements_.begin() + sortedElements, extended.elements_.end());
  std::inplace_merge(extended.elements_.begin(), extended.elements_.begin() + sortedElements,
                     extended.elements_.end());

  extended.expansions_ = layout.expansions_;
  extended.expansions_.push_back({before, layout.length_});
  return extended;
}

}  // namespace velt::propdata
