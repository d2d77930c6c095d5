#include "embedded/automation/model/ClassIndex.h"

#include <algorithm>
#include <utility>

#include "embedded/automation/model/HelpText.h"

namespace velt::automation {
namespace {

std::string narrowName(const wchar_t* name) {
  std::string narrow;
  for (; *name != L'\0'; ++name)
    narrow += static_cast<char>(*name);  // names of types are ASCII
  return narrow;
}

WORD functionFlags(const PropertyRow& row) {
  WORD flags = 0;
  if ((row.flags & rowHidden) != 0) flags |= FUNCFLAG_FHIDDEN;
  if ((row.flags & rowNonBrowsable) != 0) flags |= FUNCFLAG_FNONBROWSABLE;
  return flags;
}

}  // namespace

ClassIndex::ClassIndex(const AutomationClass& kind)
    : kind_(&kind), account_(&platform::Ledger::account(narrowName(kind.name))) {
  if (kind.general != nullptr) addRows(*kind.general);
  for (const std::span<const PropertyRow>* family : kind.families)
    addRows(*family);
  addRows(kind.rows);
  fillSlots();
}

void ClassIndex::addRows(std::span<const PropertyRow> table) {
  for (const PropertyRow& row : table) {
    std::vector<std::wstring> labels;
    if (row.access.elements != nullptr) {
      for (const wchar_t* label : row.access.elements->labels) {
        labels.push_back(row.access.elements->labelsFollowRow ? std::wstring(row.label) + L" " + label
                                                              : label);
      }
    }
    names_.add(row.name, rows_.size());
    rows_.push_back(&row);
    entries_.push_back({&row, PreparedStrings(labels)});
  }
}

void ClassIndex::fillSlots() {
  const auto slotOf = [](const Entry& entry) { return static_cast<std::uint32_t>(entry.row->dispId); };
  for (const Entry& entry : entries_)
    slotCount_ = std::max(slotCount_, slotOf(entry) + 1);
  slots_ = std::make_unique<const Entry*[]>(slotCount_);
  for (const Entry& entry : entries_)
    slots_[slotOf(entry)] = &entry;
}

const PropertyRow* ClassIndex::findAnother(const wchar_t* name) const noexcept {
  const PropertyRow* const found = find(std::wstring_view(name));
  if (found != nullptr) lastFound_.store(found, std::memory_order_relaxed);
  return found;
}

const PropertyRow* ClassIndex::find(std::wstring_view name) const noexcept {
  const std::optional<std::size_t> position = names_.find(name);
  return position ? rows_[*position] : nullptr;
}

DispatchType dispatchTypeOf(const ClassIndex& index) {
  const AutomationClass& kind = index.kind();
  // These types have no interface of their own whose id could stand here, so the class lends them its id.
  DispatchType type{kind.name, kind.help, kind.clsid, {}};
  for (const PropertyRow* row : index.rows()) {
    const WORD flags = functionFlags(*row);
    const std::wstring help = helpText(*row);
    type.functions.push_back({row->dispId, row->name, help, INVOKE_PROPERTYGET, row->type, flags});
    if (row->isWritable()) {
      type.functions.push_back({row->dispId, row->name, help, INVOKE_PROPERTYPUT, row->type, flags});
    }
  }
  return type;
}

}  // namespace velt::automation
