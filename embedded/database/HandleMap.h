#pragma once

// From the handles of a drawing to its records.
//
// One flat table for all, because a drawing has a handle for nearly every record. Safe for reading by several threads.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace velt::database {

class HandleMap {
 public:
  // Room for so many handles before the table has to grow.
  void reserve(std::size_t handles);

  // Keeps the first record that came with the handle: false when there is one already, and for the handle 0, which
  // names nothing.
  bool add(std::uint64_t handle, std::uint32_t record);

  [[nodiscard]] std::optional<std::uint32_t> find(std::uint64_t handle) const;
  [[nodiscard]] std::size_t size() const { return size_; }

 private:
  struct Place {
    // 0 while the place is free.
    std::uint64_t handle = 0;
    std::uint32_t record = 0;
  };

  // The place of the handle, or the free place where it belongs.
  [[nodiscard]] std::size_t placeOf(std::uint64_t handle) const;
  void grow(std::size_t places);

  // Their number is a power of two, or none.
  std::vector<Place> places_;
  std::size_t size_ = 0;
};

}  // namespace velt::database
