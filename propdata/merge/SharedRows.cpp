#include "propdata/merge/SharedRows.h"

#include <utility>

namespace velt::propdata {

SharedRows::SharedRows(const TqVector<PROPINFO>& rows)
    : list_(rows),
      rows_(std::as_const(list_).begin(), list_.length()),
      editable_(rows_.size() / 64 + 1),
      columns_(rows_.size()) {
  for (std::uint32_t place = 0; place < rows_.size(); ++place) {
    if (rows_[place].isWritable) writable_.push_back(place);
    if (rows_[place].isEditable) editable_[place / 64] |= std::uint64_t{1} << place % 64;
  }
}

void SharedRows::makeRoomForStates(Column& column) const {
  column.states = std::make_unique<std::uint8_t[]>(members_);
}

void SharedRows::makeRoomForValues(Column& column) const {
  column.values = std::make_unique_for_overwrite<VARIANT[]>(members_);
}

void SharedRows::setElements(Member member, std::uint32_t place, VARIANT* elements) {
  Column& column = columns_[place];
  if (column.elements == nullptr) column.elements = std::make_unique_for_overwrite<VARIANT*[]>(members_);
  column.elements[member] = elements;
}

}  // namespace velt::propdata
