#include "propdata/merge/RecordLists.h"

#include <utility>

#include "propdata/merge/Merge.h"

namespace velt::propdata {

ListLayout& RecordLists::layout(std::size_t k) {
  ListLayout*& layout = layouts_[k];
  if (layout == nullptr) layout = &table_.of(list(k));
  return *layout;
}

DispatchDynPropSourceNode RecordLists::pair(std::size_t k, std::uint32_t place) const {
  const PROPINFO& row = list(k)[place];
  return {row.pDispatch, row.pDynamicProperty};
}

Reading RecordLists::read(std::size_t k, const Here& here, KeyNumber name) {
  const std::uint32_t place = here.place;
  TqVector<PROPINFO>& list = writable(lists_)[k];
  PROPINFO& row = writable(list)[place];
  readUnlessRead(row, elements_);
  const std::uint32_t count = elements_.length();
  if (count == 0) return {&row.value, 0};

  // Without a name the row never matches again.
  row.name = CStdStr<wchar_t>();
  reserve(list, list.length() + count);
  layouts_[k] = &brokenUp(layout(k), place, name, std::as_const(list)[place]);
  list.append(std::move(elements_));
  return {nullptr, count};
}

// Labels that elements of other lists have are shared from here on.
ListLayout& RecordLists::brokenUp(ListLayout& layout, std::uint32_t place, KeyNumber name,
                                  const PROPINFO& row) {
  std::vector<PropertyKey> keys;
  keys.reserve(elements_.length());
  for (const PROPINFO& element : std::as_const(elements_))
    keys.push_back(PropertyKey::of(element));
  const ListLayout::Continuation* const known = LayoutTable::known(layout, place);
  if (known == nullptr || known->elements != keys)
    return table_.extend(layout, place, name, row, std::move(keys));
  for (std::uint32_t i = 0; PROPINFO & element : writable(elements_))
    element.displayName = known->elements[i++].displayName;
  return *known->layout;
}

Stop RecordLists::compare(PROPINFO& row, KeyNumber property, std::size_t k, const Here& here,
                          const VARIANT& /*value*/, CStdStr<wchar_t>& errorText) const {
  return compareElement(row, property, k, here, here, errorText);
}

Stop RecordLists::compareElement(PROPINFO& row, KeyNumber /*property*/, std::size_t k, const Here& /*here*/,
                                 const ListLayout::Spot& element, CStdStr<wchar_t>& errorText) const {
  return compareRows(row, list(k)[element.place], errorText);
}

}  // namespace velt::propdata
