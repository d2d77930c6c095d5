#pragma once

// Owns one BSTR for the length of a scope.

#include <cassert>
#include <string_view>
#include <utility>

#include "host/com/Bstr.h"

namespace velt::com {

class StringHolder {
 public:
  StringHolder() = default;
  // Empty when memory is exhausted: ask isNull() where a null must not pass for the empty string.
  explicit StringHolder(std::wstring_view text)
      : held_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
  StringHolder(StringHolder&& other) noexcept : held_(other.detach()) {}
  StringHolder& operator=(StringHolder&& other) noexcept {
    if (this != &other) attach(other.detach());
    return *this;
  }
  ~StringHolder() { SysFreeString(held_); }

  void attach(BSTR string) { SysFreeString(std::exchange(held_, string)); }
  [[nodiscard]] BSTR detach() { return std::exchange(held_, nullptr); }

  // For an out-parameter; the holder must be empty.
  [[nodiscard]] BSTR* put() {
    assert(held_ == nullptr);
    return &held_;
  }
  [[nodiscard]] BSTR get() const { return held_; }
  [[nodiscard]] bool isNull() const { return held_ == nullptr; }
  // Without the terminator, embedded NULs included; empty for null.
  [[nodiscard]] std::wstring_view view() const {
    return held_ != nullptr ? std::wstring_view(held_, SysStringLen(held_)) : std::wstring_view();
  }

 private:
  BSTR held_ = nullptr;
};

}  // namespace velt::com
