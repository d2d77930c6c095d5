#pragma once

// What records held before they were edited: the stuff that undoing is made of. See Drawing::record().
//
// Ownership: changes belong to the drawing that made them, hold nothing of it, and may outlive it, but then only to end.

#include <cstddef>
#include <cstdint>
#include <unordered_set>
#include <vector>

#include "dxf/Document.h"

namespace velt::database {

class Changes {
 public:
  Changes() = default;
  Changes(Changes&&) = default;
  Changes& operator=(Changes&&) = default;

  [[nodiscard]] bool isEmpty() const noexcept { return backups_.empty(); }
  // In the order of their first edits.
  [[nodiscard]] std::vector<std::uint32_t> records() const {
    std::vector<std::uint32_t> records;
    records.reserve(backups_.size());
    for (const dxf::Document::Backup& backup : backups_)
      records.push_back(backup.record());
    return records;
  }

 private:
  friend class Drawing;
  // Before the first edit of the record; later ones do nothing.
  void keep(const dxf::Document& document, std::uint32_t record) {
    if (kept_.contains(record)) return;
    backups_.push_back(document.backup(record));
    kept_.insert(record);
  }

  std::vector<dxf::Document::Backup> backups_;
  std::unordered_set<std::uint32_t> kept_;
};

}  // namespace velt::database
