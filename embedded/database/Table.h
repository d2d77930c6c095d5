#pragma once

// One of the symbol tables of a drawing: its layers, line types, text styles, blocks, ...
//
// Ownership: the drawing owns its tables. An entry is valid until the drawing is edited or closed.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dxf/Document.h"
#include "dxf/Tag.h"
#include "host/database/VkDbObjectId.h"

namespace velt::database {

struct TableEntry {
  // In the spelling of the drawing.
  std::wstring name;
  // The table record; none for an implied entry.
  std::uint32_t record = dxf::none;
  // Of a block, the BLOCK that holds its entities; none in other tables.
  std::uint32_t definition = dxf::none;
  // Null for an implied line type. An implied layer can be opened, and has the defaults of a layer.
  VkDbObjectId id{};

  // There without a record: the line types ByLayer and ByBlock, and layers that entities name and the table lacks.
  [[nodiscard]] bool isImplied() const { return record == dxf::none; }
};

class Table {
 public:
  Table() = default;
  explicit Table(std::vector<TableEntry> entries);

  // Those with a record in file order, with the implied line types before them and the implied layers after them.
  [[nodiscard]] std::span<const TableEntry> entries() const { return entries_; }

  // Upper and lower case do not differ. The first, when several have the name; null when none has.
  [[nodiscard]] const TableEntry* find(std::wstring_view name) const;

  // The same by a name as it stands in the document, without the blanks around it. Entities name the same few entries by
  // the hundred thousand, so what was asked once is known.
  [[nodiscard]] const TableEntry* findWritten(std::string_view written, const dxf::Document& document) const;

  // The entry of that record; null when it has none.
  [[nodiscard]] const TableEntry* ofRecord(std::uint32_t record) const;

  [[nodiscard]] std::uint32_t indexOf(const TableEntry& entry) const {
    return static_cast<std::uint32_t>(&entry - entries_.data());
  }

 private:
  std::vector<TableEntry> entries_;
  std::unordered_map<std::wstring, std::uint32_t> byName_;
  std::unordered_map<std::uint32_t, std::uint32_t> byRecord_;

  struct HashOfText {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
  };
  // By what was asked, the entry; none where there is none.
  mutable std::unordered_map<std::string, std::uint32_t, HashOfText, std::equal_to<>> byWritten_;
};

}  // namespace velt::database
