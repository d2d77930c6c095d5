#pragma once

// Holds the strings and cookies that a call hands out together: each string is freed with SysFreeString, then both
// arrays with CoTaskMemFree. Counts that come without an array count as 0.

#include <cassert>
#include <utility>

#include "holders/HandedOver.h"
#include "host/com/ComRuntime.h"
#include "host/com/CountedArrays.h"

namespace velt::holders {

struct CountedStrings {
  CALPOLESTR strings{};
  CADWORD cookies{};
};

class CountedStringsHolder {
 public:
  CountedStringsHolder() = default;
  CountedStringsHolder(CountedStringsHolder&& other) noexcept : held_(other.detach()) {}
  CountedStringsHolder& operator=(CountedStringsHolder&& other) noexcept {
    if (this == &other) return *this;
    reset();
    held_ = other.detach();
    return *this;
  }
  ~CountedStringsHolder() { free(held_); }

  // For the two out-parameters.
  [[nodiscard]] CALPOLESTR* putStrings() {
    assert(held_.strings.pElems == nullptr);
    return &held_.strings;
  }
  [[nodiscard]] CADWORD* putCookies() {
    assert(held_.cookies.pElems == nullptr);
    return &held_.cookies;
  }
  void attach(const CountedStrings& arrays) {
    assert(held_.strings.pElems == nullptr && held_.cookies.pElems == nullptr);
    held_ = arrays;
  }
  [[nodiscard]] CountedStrings detach() { return std::exchange(held_, {}); }
  [[nodiscard]] const CountedStrings& get() const { return held_; }

  [[nodiscard]] ULONG stringCount() const {
    return held_.strings.pElems != nullptr ? held_.strings.cElems : 0;
  }
  [[nodiscard]] ULONG cookieCount() const {
    return held_.cookies.pElems != nullptr ? held_.cookies.cElems : 0;
  }
  // Null where there are fewer strings, as there may be fewer than cookies.
  [[nodiscard]] const OLECHAR* string(ULONG index) const {
    return index < stringCount() ? held_.strings.pElems[index] : nullptr;
  }
  // Requires index < cookieCount().
  [[nodiscard]] DWORD cookie(ULONG index) const {
    assert(index < cookieCount());
    return held_.cookies.pElems[index];
  }

  // Gives everything back before the scope ends.
  void reset() { free(detach()); }

 private:
  static void free(const CountedStrings& given) {
    LPOLESTR* const strings = given.strings.pElems;
    DWORD* const cookies = given.cookies.pElems;
    const ULONG count = given.strings.cElems;
    if (strings != nullptr) {
      for (ULONG i = 0; i < count; ++i)
        SysFreeString(strings[i]);
      CoTaskMemFree(strings);
    }
    if (cookies != nullptr) CoTaskMemFree(cookies);
  }

  CountedStrings held_;
};

}  // namespace velt::holders
