#pragma once

// Holds what one VARIANT owns.

#include "host/com/Variant.h"

namespace velt::propdata {

class ScopedVariant {
 public:
  ScopedVariant() { VariantInit(&value_); }
  ScopedVariant(const ScopedVariant&) = delete;
  ScopedVariant& operator=(const ScopedVariant&) = delete;
  ~ScopedVariant() {
    // An empty one owns nothing: the host is not troubled after a detach().
    if (value_.vt != VT_EMPTY) VariantClear(&value_);
  }

  VARIANT* put() { return &value_; }
  const VARIANT& get() const { return value_; }
  // The value goes over to the caller bit for bit.
  VARIANT detach() {
    const VARIANT value = value_;
    VariantInit(&value_);
    return value;
  }

 private:
  VARIANT value_;
};

}  // namespace velt::propdata
