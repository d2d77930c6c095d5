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

  // One row of all entities of the class.
  class Column {
   public:
    const PROPINFO& row() const { return row_; }

    bool isRead(Member member) const { return row_.hasValue || isReadToTheEnd(member); }
    // Whether a reading of it has come to its end; what it holds before that may be anybody's.
    bool isReadToTheEnd(Member member) const { return states_ != nullptr && (states_[member] & read) != 0; }
    // From here on the row has a value of its own, which holds at first what the shared row holds.
    VARIANT& makeValue(Member member) {
      makeRoomForState();
      if (values_ == nullptr) makeRoomForValues();
      VARIANT& value = values_[member];
      value = row_.value;
      states_[member] |= valued;
      return value;
    }
    // From here on the row counts as read. Does not throw once makeRoomForState() was called.
    void setRead(Member member) { states_[member] |= read; }
    void makeRoomForState() {
      if (states_ == nullptr) makeRoomForStates();
    }
    // What the row holds, its own or the shared one's.
    const VARIANT& value(Member member) const {
      return states_ != nullptr && (states_[member] & valued) != 0 ? values_[member] : row_.value;
    }
    // The elements that the row broke up into; their memory is the caller's.
    void setElements(Member member, VARIANT* elements) {
      if (elements_ == nullptr) makeRoomForElements();
      elements_[member] = elements;
    }
    VARIANT* elements(Member member) const { return elements_[member]; }

    // Fetches the elements of an entity that broke up, and where those of still later ones stand.
    [[gnu::always_inline]] void fetchElements(Member member) const {
      const auto* const elements = static_cast<const std::byte*>(static_cast<const void*>(elements_[member]));
      __builtin_prefetch(elements);
      __builtin_prefetch(elements + 64);
      const Member later = member + 96;
      if (later < of_.members_ && later % 8 == 0) __builtin_prefetch(elements_ + later);
    }

   private:
    friend class SharedRows;
    enum State : std::uint8_t { read = 1, valued = 2 };

    Column(SharedRows& of, const PROPINFO& row) : of_(of), row_(row) {}
    void makeRoomForStates();
    void makeRoomForValues();
    void makeRoomForElements();

    SharedRows& of_;
    const PROPINFO& row_;
    // The three arrays are made when the first entity needs them, and have a place for every entity; of values and elements
    // only those places are written that are in use.
    std::uint8_t* states_ = nullptr;
    VARIANT* values_ = nullptr;
    VARIANT** elements_ = nullptr;
  };

  // Shares the block of the list, which therefore stays as it is, whatever becomes of the list. The memory has to outlive
  // the rows.
  SharedRows(const TqVector<PROPINFO>& rows, QueryMemory& memory);
  SharedRows(const SharedRows&) = delete;
  SharedRows& operator=(const SharedRows&) = delete;

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

  // In the order of the rows.
  std::span<Column> columns() { return columns_; }
  std::span<const Column> columns() const { return columns_; }

  // Gives back what each row holds, in their order. Fetches the values of a later entity meanwhile, and the texts and objects
  // of one that comes sooner: whoever goes through them entity by entity reads in more places by turns than the processor
  // expects. Inline wherever it is called: compilers take fetching by itself for something without effect.
  [[gnu::always_inline]] void clearValues(Member member) {
    const Member next = member + 8;
    const Member soon = member + 16;
    const Member later = member + 128;
    const bool fetchesValues = soon < members_;
    const bool fetchesStates = later < members_ && later % 16 == 0;
    for (const Column& column : columns_) {
      const bool hasStates = column.states_ != nullptr;
      if (hasStates && fetchesValues) {
        if ((column.states_[soon] & Column::valued) != 0) __builtin_prefetch(column.values_ + soon);
        if ((column.states_[next] & Column::valued) != 0) fetchOwned(column.values_[next]);
      }
      if (hasStates && fetchesStates) __builtin_prefetch(column.states_ + later);
      if (hasStates && (column.states_[member] & Column::valued) != 0) {
        VariantClear(&column.values_[member]);
      } else {
        VARIANT shared = column.row_.value;
        VariantClear(&shared);
      }
    }
  }

  // What a value owns, for whoever gives it back soon.
  [[gnu::always_inline]] static void fetchOwned(const VARIANT& value) {
    if (value.vt == VT_BSTR || value.vt == VT_DISPATCH) __builtin_prefetch(value.byref);
  }

  // Null until the first search in an entity of the class.
  ListLayout* layout = nullptr;

 private:
  TqVector<PROPINFO> list_;
  std::span<const PROPINFO> rows_;
  std::vector<std::uint32_t> writable_;
  QueryMemory& memory_;
  std::vector<std::uint64_t> editable_;
  Member members_ = 0;
  std::vector<Column> columns_;
};

}  // namespace velt::propdata
