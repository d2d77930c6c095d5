#pragma once

// Owns the content of one VARIANT for the length of a scope.

#include <cassert>
#include <utility>

#include "host/com/Variant.h"

namespace velt::com {

class VariantHolder {
 public:
  VariantHolder() = default;
  VariantHolder(VariantHolder&& other) noexcept : held_(other.detach()) {}
  VariantHolder& operator=(VariantHolder&& other) noexcept {
    if (this != &other) attach(other.detach());
    return *this;
  }
  ~VariantHolder() { VariantClear(&held_); }

  void attach(const VARIANT& value) {
    VariantClear(&held_);
    held_ = value;
  }
  [[nodiscard]] VARIANT detach() { return std::exchange(held_, VARIANT{}); }

  // For an out-parameter; the holder must be empty.
  [[nodiscard]] VARIANT* put() {
    assert(held_.vt == VT_EMPTY);
    return &held_;
  }
  [[nodiscard]] VARIANT& get() { return held_; }
  [[nodiscard]] const VARIANT& get() const { return held_; }

 private:
  VARIANT held_{};
};

}  // namespace velt::com
