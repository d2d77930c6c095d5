#pragma once

// Holds what one VARIANT owns. put() and attach() require VT_EMPTY, as all holders require to be empty.

#include <cassert>

#include "holders/HandedOver.h"
#include "host/com/Variant.h"

namespace velt::holders {

class VariantHolder {
 public:
  VariantHolder() { VariantInit(&held_); }
  VariantHolder(VariantHolder&& other) noexcept : held_(other.detach()) {}
  VariantHolder& operator=(VariantHolder&& other) noexcept {
    if (this == &other) return *this;
    reset();
    held_ = other.detach();
    return *this;
  }
  ~VariantHolder() { reset(); }

  // For an out-parameter.
  [[nodiscard]] VARIANT* put() {
    assert(held_.vt == VT_EMPTY);
    return &held_;
  }
  // Takes the value over bit for bit.
  void attach(const VARIANT& value) {
    assert(held_.vt == VT_EMPTY);
    held_ = value;
  }
  // The value goes over to the caller bit for bit.
  [[nodiscard]] VARIANT detach() {
    const VARIANT value = held_;
    held_.vt = VT_EMPTY;
    return value;
  }
  [[nodiscard]] VARIANT& get() { return held_; }
  [[nodiscard]] const VARIANT& get() const { return held_; }

  void reset() {
    // An empty one owns nothing: the host is not troubled after a detach().
    if (held_.vt != VT_EMPTY) VariantClear(&held_);
  }

 private:
  VARIANT held_{};
};

}  // namespace velt::holders
