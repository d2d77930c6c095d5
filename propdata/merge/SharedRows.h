#pragma once

// The rows that all entities of a class and variant have in common, and what was read of those entities, row by row: the
// value, or the elements that it broke up into. So a row that is read costs an entity the value and a byte.
//
// Values are owned by nobody, as in records: they are given back by VariantClear or not at all.
// Failure: without memory std::bad_alloc is thrown and nothing is changed.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "propdata/VeltPropData.h"
#include "propdata/merge/ListLayout.h"
#include "propdata/merge/QueryMemory.h"

namespace velt::propdata {

class SharedRows {
 public:
  // Numbers the entities of one class, from 0.
  using Member = std::uint32_t;

  // Shares the block of the list, which therefore stays as it is, whatever becomes of the list. The memory has to outlive
  // the rows.
  SharedRows(const TqVector<PROPINFO>& rows, QueryMemory& memory);

  // Whether this list has the rows in the same block.
  bool are(const TqVector<PROPINFO>& list) const { return list.begin() == rows_.data(); }
  std::span<const PROPINFO> rows() const { return rows_; }
  // The places of the rows that are asked whether they may be edited.
  std::span<const std::uint32_t> writable() const { return writable_; }

  // A bit for each row, from the lowest of the first word on; there is always a first word.
  std::span<const std::uint64_t> editable() const { return editable_; }

  // Another entity. All entities are added before a value is stored.
  Member add() { return members_++; }
  Member members() const { return members_; }

  bool isRead(Member member, std::uint32_t place) const {
    return rows_[place].hasValue || has(member, place, read);
  }
  // Whether a reading of it has come to its end; what it holds before that may be anybody's.
  bool isReadToTheEnd(Member member, std::uint32_t place) const { return has(member, place, read); }
  // From here on the row has a value of its own, which holds at first what the shared row holds.
  VARIANT& makeValue(Member member, std::uint32_t place) {
    makeRoomForState(place);
    Column& column = columns_[place];
    if (column.values == nullptr) makeRoomForValues(column);
    column.values[member] = rows_[place].value;
    column.states[member] |= valued;
    return column.values[member];
  }
  // From here on the row counts as read. Does not throw once makeRoomForState() of the row was called.
  void setRead(Member member, std::uint32_t place) { columns_[place].states[member] |= read; }
  void makeRoomForState(std::uint32_t place) {
    Column& column = columns_[place];
    if (column.states == nullptr) makeRoomForStates(column);
  }
  // What the row holds, its own or the shared one's.
  const VARIANT& value(Member member, std::uint32_t place) const {
    return has(member, place, valued) ? columns_[place].values[member] : rows_[place].value;
  }

  // Hands over what each row holds, in their order. Fetches the values of a later entity meanwhile: whoever goes through them
  // entity by entity reads in more places by turns than the processor expects. Inline wherever it is called: compilers take
  // fetching by itself for something without effect.
  template <class Visitor>
  [[gnu::always_inline]] void visitValues(Member member, Visitor&& visit) const {
    const Member soon = member + 16;
    const Member later = member + 128;
    const bool fetchesValues = soon < members_;
    const bool fetchesStates = later < members_ && later % 16 == 0;
    const PROPINFO* row = rows_.data();
    for (const Column& column : columns_) {
      const bool hasStates = column.states != nullptr;
      if (hasStates && fetchesValues && (column.states[soon] & valued) != 0)
        __builtin_prefetch(column.values + soon);
      if (hasStates && fetchesStates) __builtin_prefetch(column.states + later);
      visit(hasStates && (column.states[member] & valued) != 0 ? column.values[member] : row->value);
      ++row;
    }
  }
  // The same for the elements of a row of an entity that broke up like this member will, and where those of still later ones
  // stand.
  [[gnu::always_inline]] void fetchElements(Member member, std::uint32_t place) const {
    VARIANT* const* const all = columns_[place].elements;
    const auto* const elements = static_cast<const std::byte*>(static_cast<const void*>(all[member]));
    __builtin_prefetch(elements);
    __builtin_prefetch(elements + 64);
    const Member later = member + 96;
    if (later < members_ && later % 8 == 0) __builtin_prefetch(all + later);
  }

  // The elements that the row broke up into; their memory is the caller's.
  void setElements(Member member, std::uint32_t place, VARIANT* elements) {
    Column& column = columns_[place];
    if (column.elements == nullptr) makeRoomForElements(column);
    column.elements[member] = elements;
  }
  VARIANT* elements(Member member, std::uint32_t place) const { return columns_[place].elements[member]; }

  // Null until the first search in an entity of the class.
  ListLayout* layout = nullptr;

 private:
  enum State : std::uint8_t { read = 1, valued = 2 };

  // One row of all entities of the class. The three arrays are made when the first entity needs them, and have a place
  // for every entity; of values and elements only those places are written that are in use.
  struct Column {
    std::uint8_t* states = nullptr;
    VARIANT* values = nullptr;
    VARIANT** elements = nullptr;
  };

  void makeRoomForStates(Column& column) const;
  void makeRoomForValues(Column& column) const;
  void makeRoomForElements(Column& column) const;
  bool has(Member member, std::uint32_t place, State state) const {
    const Column& column = columns_[place];
    return column.states != nullptr && (column.states[member] & state) != 0;
  }

  TqVector<PROPINFO> list_;
  std::span<const PROPINFO> rows_;
  std::vector<std::uint32_t> writable_;
  QueryMemory& memory_;
  std::vector<std::uint64_t> editable_;
  Member members_ = 0;
  std::vector<Column> columns_;
};

}  // namespace velt::propdata
