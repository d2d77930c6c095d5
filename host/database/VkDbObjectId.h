#pragma once

// Names an object of an open drawing. The value means something to the host alone; a stale or made-up one
// opens nothing.

#include <cstdint>

class VkDbObjectId {
 public:
  static const VkDbObjectId kNull;

  constexpr VkDbObjectId() = default;

  bool isNull() const { return value_ == 0; }
  VkDbObjectId& setFromOldId(long oldId) {
    value_ = static_cast<std::uint64_t>(oldId);
    return *this;
  }
  long asOldId() const { return static_cast<long>(value_); }

  friend bool operator==(const VkDbObjectId&, const VkDbObjectId&) = default;

 private:
  std::uint64_t value_ = 0;
};

inline constexpr VkDbObjectId VkDbObjectId::kNull{};
