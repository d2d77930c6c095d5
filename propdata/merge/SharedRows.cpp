#include "propdata/merge/SharedRows.h"

#include <algorithm>
#include <utility>

namespace velt::propdata {

SharedRows::SharedRows(const TqVector<PROPINFO>& rows, QueryMemory& memory)
    : list_(rows),
      rows_(std::as_const(list_).begin(), list_.length()),
      memory_(memory),
      editable_(rows_.size() / 64 + 1),
      columns_(rows_.size()) {
  for (std::uint32_t place = 0; place < rows_.size(); ++place) {
    if (rows_[place].isWritable) writable_.push_back(place);
    if (rows_[place].isEditable) editable_[place / 64] |= std::uint64_t{1} << place % 64;
  }
}

void SharedRows::makeRoomForStates(Column& column) const {
  auto* const states = memory_.arrayOf<std::uint8_t>(members_);
  std::fill_n(states, members_, std::uint8_t{0});
  column.states = states;
}

void SharedRows::makeRoomForValues(Column& column) const {
  column.values = memory_.arrayOf<VARIANT>(members_);
}

void SharedRows::makeRoomForElements(Column& column) const {
  column.elements = memory_.arrayOf<VARIANT*>(members_);
}

}  // namespace velt::propdata
