#pragma once

// One of the symbol tables of a drawing: its layers, line types, text styles, blocks, ...
//
// The drawing owns its tables. An entry stays where it is until the drawing is edited or closed.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dxf/Tag.h"
#include "host/database/VkDbObjectId.h"

namespace velt::database {

struct TableEntry {
  // As the drawing writes it, decoded.
  std::wstring name;
  // None for an implied entry.
  std::uint32_t record = dxf::none;
  std::uint32_t definition =
      // Of a block: its BLOCK, which its entities stand in; none elsewhere.
      dxf::none;
  // Null for an implied entry.
  VkDbObjectId id{};

  // Every drawing has it without having to say so, as the line types ByLayer and ByBlock.
  [[nodiscard]] bool isImplied() const { return id.isNull(); }
};

class Table {
 public:
  Table() = default;
  explicit Table(std::vector<TableEntry> entries);

  // Those that have a record in file order, before them the implied ones.
  [[nodiscard]] std::span<const TableEntry> entries() const { return entries_; }

  // Case does not matter. Null when there is none; the first of several.
  [[nodiscard]] const TableEntry* find(std::wstring_view name) const;

  // The entry made of this record; null when there is none.
  [[nodiscard]] const TableEntry* ofRecord(std::uint32_t record) const;

  [[nodiscard]] std::uint32_t indexOf(const TableEntry& entry) const {
    return static_cast<std::uint32_t>(&entry - entries_.data());
  }

 private:
  std::vector<TableEntry> entries_;
  std::unordered_map<std::wstring, std::uint32_t> byName_;
  std::unordered_map<std::uint32_t, std::uint32_t> byRecord_;
};

}  // namespace velt::database
