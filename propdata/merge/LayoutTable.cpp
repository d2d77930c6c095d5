#include "propdata/merge/LayoutTable.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

namespace velt::propdata {

namespace {

bool hasKey(const PROPINFO& row, const NameKey& key) {
  return row.categoryId == key.categoryId && row.categoryName == key.categoryName && row.name == key.name;
}

}  // namespace

bool LayoutTable::KnownList::isLike(const TqVector<PROPINFO>& list) const {
  return layout != nullptr && std::equal(list.begin(), list.end(), rows.begin(), rows.end(), hasKey);
}

ListLayout& LayoutTable::of(const TqVector<PROPINFO>& list) {
  const std::size_t hash = list.isEmpty() ? 0 : std::hash<std::wstring>()(list[0].name.str());
  KnownList& known = known_[hash % known_.size()];
  if (!known.isLike(list)) {
    known.layout = nullptr;
    known.rows.clear();
    std::transform(list.begin(), list.end(), std::back_inserter(known.rows), NameKey::of);
    known.layout = &build({list.begin(), list.length()});
  }
  return *known.layout;
}

ListLayout& LayoutTable::build(std::span<const PROPINFO> rows, std::vector<KeyNumber> properties) {
  ListLayout& layout = layouts_.emplace_back();
  layout.properties_ = std::move(properties);
  layout.length_ = static_cast<std::uint32_t>(rows.size());
  layout.rows_.reserve(rows.size());
  for (std::uint32_t place = 0; place < rows.size(); ++place)
    layout.rows_.push_back({keys_.numberOf(NameKey::of(rows[place])), place});
  std::sort(layout.rows_.begin(), layout.rows_.end());
  return layout;
}

ListLayout& LayoutTable::extend(ListLayout& layout, std::uint32_t place, KeyNumber name, const PROPINFO& row,
                                std::vector<PropertyKey> elements) {
  using Row = ListLayout::Row;
  ListLayout& extended = layouts_.emplace_back();
  extended.length_ = layout.length_ + static_cast<std::uint32_t>(elements.size());

  extended.properties_ = layout.properties_;
  extended.rows_ = layout.rows_;
  const auto replace = [&](Row from, Row to) {
    auto& rows = extended.rows_;
    rows.erase(std::lower_bound(rows.begin(), rows.end(), from));
    rows.insert(std::lower_bound(rows.begin(), rows.end(), to), to);
  };
  replace({name, place}, {keys_.numberOf(NameKey::ofNameless(row)), place});

  auto properties = std::make_shared<std::vector<KeyNumber>>();
  properties->reserve(elements.size());
  extended.elements_ = layout.elements_;
  const auto sortedElements = static_cast<std::ptrdiff_t>(extended.elements_.size());
  for (std::uint32_t at = layout.length_; const PropertyKey& element : elements) {
    properties->push_back(keys_.numberOf(element));
    extended.elements_.push_back({name, properties->back(), at++});
  }
  std::sort(extended.elements_.begin() + sortedElements, extended.elements_.end());
  std::inplace_merge(extended.elements_.begin(), extended.elements_.begin() + sortedElements,
                     extended.elements_.end());

  extended.expansions_ = layout.expansions_;
  extended.expansions_.push_back({name, place, layout.length_, std::move(properties)});
  if (known(layout, place) == nullptr)
    layout.continuations_.push_back({place, std::move(elements), &extended});
  return extended;
}

}  // namespace velt::propdata
