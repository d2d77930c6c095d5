#pragma once

// Holds one BSTR; null before put().

#include <cassert>
#include <utility>

#include "host/com/Bstr.h"
#include "text/CStdStr.h"

namespace velt::propdata {

class BStr {
 public:
  BStr() = default;
  explicit BStr(const CStdStr<wchar_t>& text) : string_(SysAllocString(text.c_str())) {}
  BStr(const BStr&) = delete;
  BStr& operator=(const BStr&) = delete;
  ~BStr() { free(); }

  BSTR* put() {
    assert(string_ == nullptr);
    return &string_;
  }
  void attach(BSTR string) {
    assert(string_ == nullptr);
    string_ = string;
  }
  BSTR detach() { return std::exchange(string_, nullptr); }
  BSTR get() const { return string_; }
  CStdStr<wchar_t> text() const { return CStdStr<wchar_t>(string_); }

  void free() {
    if (string_ != nullptr) SysFreeString(detach());
  }

 private:
  BSTR string_ = nullptr;
};

}  // namespace velt::propdata
