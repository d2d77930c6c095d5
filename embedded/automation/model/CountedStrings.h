#pragma once

// Lists of texts with their cookies, as IPerPropertyBrowsing and the expander hand them out.

#include <cstddef>
#include <string_view>

#include "embedded/com/Blocks.h"
#include "host/com/ComRuntime.h"
#include "host/com/CountedArrays.h"

namespace velt::automation {

// Builds both arrays in the caller's memory and gives them up only when all is complete.
class CountedStrings {
 public:
  // For exactly so many texts.
  explicit CountedStrings(std::size_t count)
      : count_(static_cast<ULONG>(count)),
        strings_(static_cast<LPOLESTR*>(com::makeTaskMemory(count * sizeof(LPOLESTR)))),
        cookies_(static_cast<DWORD*>(com::makeTaskMemory(count * sizeof(DWORD)))) {}

  ~CountedStrings() {
    for (ULONG i = 0; i < used_; ++i)
      SysFreeString(strings_[i]);
    if (strings_ != nullptr) CoTaskMemFree(strings_);
    if (cookies_ != nullptr) CoTaskMemFree(cookies_);
  }
  CountedStrings(const CountedStrings&) = delete;
  CountedStrings& operator=(const CountedStrings&) = delete;

  // The next text; its number is its cookie. Nothing happens once memory ran out.
  void add(std::wstring_view text) {
    if (hasRoom()) addString(com::makeString(text.data(), text.size() * sizeof(OLECHAR)));
  }

  // E_OUTOFMEMORY, and the arguments stay as they are, when memory ran out on the way.
  HRESULT giveTo(CALPOLESTR& strings, CADWORD& cookies) {
    if (strings_ == nullptr || cookies_ == nullptr || used_ != count_) return E_OUTOFMEMORY;
    strings = {count_, strings_};
    cookies = {count_, cookies_};
    strings_ = nullptr;
    cookies_ = nullptr;
    used_ = 0;
    return S_OK;
  }

 private:
  [[nodiscard]] bool hasRoom() const { return strings_ != nullptr && cookies_ != nullptr && used_ != count_; }
  void addString(BSTR string) {
    if (string == nullptr) return;
    strings_[used_] = string;
    cookies_[used_] = used_;
    ++used_;
  }

  ULONG count_;
  ULONG used_ = 0;
  LPOLESTR* strings_;
  DWORD* cookies_;
};

}  // namespace velt::automation
