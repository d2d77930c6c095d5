#pragma once

// VkDbObjectId: names an object of an open drawing. The number means something to the host alone, and no number may do
// harm: one that is out of date or made up opens nothing. The old-id form is the same number as a `long`, in which a
// palette hands over its selection.

#include <cstdint>

class VkDbObjectId {
 public:
  // Names nothing, and so does a new id.
  static const VkDbObjectId kNull;

  constexpr VkDbObjectId() = default;

  // Whether it names nothing.
  bool isNull() const { return value_ == 0; }
  // From the number of a palette, and back to it. All 64 bits are kept.
  VkDbObjectId& setFromOldId(long oldId) {
    value_ = static_cast<std::uint64_t>(oldId);
    return *this;
  }
  long asOldId() const { return static_cast<long>(value_); }

  // The same number.
  friend bool operator==(const VkDbObjectId&, const VkDbObjectId&) = default;

 private:
  std::uint64_t value_ = 0;
};

inline constexpr VkDbObjectId VkDbObjectId::kNull{};
