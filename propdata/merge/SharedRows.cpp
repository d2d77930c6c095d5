#include "propdata/merge/SharedRows.h"

#include <algorithm>
#include <utility>

namespace velt::propdata {

SharedRows::SharedRows(const TqVector<PROPINFO>& rows, QueryMemory& memory)
    : list_(rows),
      rows_(std::as_const(list_).begin(), list_.length()),
      memory_(memory),
      editable_(rows_.size() / 64 + 1) {
  columns_.reserve(rows_.size());
  for (std::uint32_t place = 0; place < rows_.size(); ++place) {
    columns_.push_back(Column(*this, rows_[place]));
    if (rows_[place].isWritable) writable_.push_back(place);
    if (rows_[place].isEditable) editable_[place / 64] |= std::uint64_t{1} << place % 64;
  }
}

void SharedRows::Column::makeRoomForStates() {
  auto* const states = of_.memory_.arrayOf<std::uint8_t>(of_.members_);
  std::fill_n(states, of_.members_, std::uint8_t{0});
  states_ = states;
}

void SharedRows::Column::makeRoomForValues() {
  values_ = of_.memory_.arrayOf<VARIANT>(of_.members_);
}

void SharedRows::Column::makeRoomForElements() {
  elements_ = of_.memory_.arrayOf<VARIANT*>(of_.members_);
}

}  // namespace velt::propdata
