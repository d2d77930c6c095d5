#pragma once

// Owns what a VARIANT refers to.

#include <utility>

#include "host/com/Variant.h"

namespace velt::tool {

class OwnedVariant {
 public:
  OwnedVariant() { VariantInit(&variant_); }
  OwnedVariant(OwnedVariant&& other) noexcept : OwnedVariant() { std::swap(variant_, other.variant_); }
  OwnedVariant& operator=(OwnedVariant&& other) noexcept {
    std::swap(variant_, other.variant_);
    return *this;
  }
  ~OwnedVariant() { VariantClear(&variant_); }

  VARIANT& get() { return variant_; }
  const VARIANT& get() const { return variant_; }

 private:
  VARIANT variant_{};
};

}  // namespace velt::tool
