#pragma once

// A class's table, prepared for being asked.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/automation/model/NameIndex.h"
#include "embedded/automation/model/PreparedStrings.h"
#include "embedded/automation/model/PropertyTable.h"
#include "embedded/automation/model/TypeLibrary.h"
#include "embedded/platform/Ledger.h"

namespace velt::automation {

// Made once per class and shared by all its objects, on every thread; what it answers never changes.
class ClassIndex {
 public:
  explicit ClassIndex(const AutomationClass& kind);

  [[nodiscard]] const AutomationClass& kind() const noexcept { return *kind_; }
  // The general rows, those of the families, and then the class's own.
  [[nodiscard]] std::span<const PropertyRow* const> rows() const noexcept { return rows_; }
  // Null for an id that no row has.
  [[nodiscard]] const PropertyRow* find(DISPID dispId) const noexcept {
    const Entry* const entry = findEntry(dispId);
    return entry == nullptr ? nullptr : entry->row;
  }
  // In any case of the letters; null when no row has it.
  [[nodiscard]] const PropertyRow* find(std::wstring_view name) const noexcept;
  // The same for a text that ends with a null character, and that is mostly the one that was asked for before: a query
  // asks every entity for one property after the other.
  [[nodiscard]] const PropertyRow* findAgain(const wchar_t* name) const noexcept {
    const PropertyRow* const last = lastFound_.load(std::memory_order_relaxed);
    if (last != nullptr && std::wcscmp(last->name, name) == 0) [[likely]]
      return last;
    return findAnother(name);
  }
  struct Entry {
    const PropertyRow* row;
    // What the elements of one group are labelled; empty for a row that is not expanded.
    PreparedStrings labels;
  };
  // Null for an id that no row has.
  [[nodiscard]] const Entry* findEntry(DISPID dispId) const noexcept {
    // A negative id becomes a large number.
    const auto slot = static_cast<std::uint32_t>(dispId);
    return slot < slotCount_ ? slots_[slot] : nullptr;
  }
  // Counts the references to the class's objects.
  [[nodiscard]] platform::LedgerAccount& account() const noexcept { return *account_; }

 private:
  const PropertyRow* findAnother(const wchar_t* name) const noexcept;
  void addRows(std::span<const PropertyRow> table);
  void fillSlots();

  const AutomationClass* kind_;
  std::vector<const PropertyRow*> rows_;
  // In the order of rows_.
  std::vector<Entry> entries_;
  // By DISPID, the entry that has it, or null. Every call names a DISPID; a class has each once, and all of them are small
  // numbers.
  std::unique_ptr<const Entry*[]> slots_;
  std::uint32_t slotCount_ = 0;
  NameIndex names_;
  platform::LedgerAccount* account_;
  // By name. Any of the class's rows will do, so threads need not agree.
  mutable std::atomic<const PropertyRow*> lastFound_{nullptr};
};

// What the class publishes: a get for every row, followed by a put where it can be written.
[[nodiscard]] DispatchType dispatchTypeOf(const ClassIndex& index);

}  // namespace velt::automation
