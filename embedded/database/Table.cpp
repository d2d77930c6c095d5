#include "embedded/database/Table.h"

#include <utility>

#include "embedded/database/NameFolding.h"

namespace velt::database {

Table::Table(std::vector<TableEntry> entries) : entries_(std::move(entries)) {
  for (const TableEntry& entry : entries_) {
    byName_.emplace(foldName(entry.name), indexOf(entry));
    if (entry.record != dxf::none) byRecord_.emplace(entry.record, indexOf(entry));
    if (entry.definition != dxf::none) byRecord_.emplace(entry.definition, indexOf(entry));
  }
}

const TableEntry* Table::find(std::wstring_view name) const {
  const auto found = byName_.find(foldName(name));
  return found != byName_.end() ? &entries_[found->second] : nullptr;
}

const TableEntry* Table::findWritten(std::string_view written, const dxf::Document& document) const {
  auto known = byWritten_.find(written);
  if (known == byWritten_.end()) {
    const TableEntry* const found = find(document.decode(written));
    known = byWritten_.emplace(written, found != nullptr ? indexOf(*found) : dxf::none).first;
  }
  return known->second != dxf::none ? &entries_[known->second] : nullptr;
}

const TableEntry* Table::ofRecord(std::uint32_t record) const {
  const auto found = byRecord_.find(record);
  return found != byRecord_.end() ? &entries_[found->second] : nullptr;
}

}  // namespace velt::database
