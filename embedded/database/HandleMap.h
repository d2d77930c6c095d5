#pragma once

// Finds the records of a drawing by their handles.
//
// One flat table, because nearly every record has a handle: eight bytes for each place in it. Handles of 32 bits and more,
// which hardly any drawing has, are in a tree beside it.
// Threads: any number may read at once.

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace velt::database {

class HandleMap {
 public:
  // Makes room for that many handles.
  void reserve(std::size_t handles);

  // False, and changes nothing, when the handle is there already, and for the handle 0, which names nothing.
  bool add(std::uint64_t handle, std::uint32_t record);

  [[nodiscard]] std::optional<std::uint32_t> find(std::uint64_t handle) const;
  [[nodiscard]] std::size_t size() const { return taken_ + large_.size(); }

 private:
  struct Place {
    // 0 in a free place.
    std::uint32_t handle = 0;
    std::uint32_t record = 0;
  };

  // The place of the handle, or the free place where it belongs.
  [[nodiscard]] std::size_t placeOf(std::uint32_t handle) const;
  void grow(std::size_t places);

  // Either empty, or a power of two of them.
  std::vector<Place> places_;
  // Of them.
  std::size_t taken_ = 0;
  std::map<std::uint64_t, std::uint32_t> large_;
};

}  // namespace velt::database
