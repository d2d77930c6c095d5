#pragma once

// Holds the strings and cookies that a call hands out together: each string is freed with SysFreeString, then
// both arrays with CoTaskMemFree. Counts without an array behind them count as 0.

#include "host/com/ComRuntime.h"
#include "host/com/CountedArrays.h"
#include "text/CStdStr.h"

namespace velt::propdata {

class CountedStrings {
 public:
  CountedStrings() = default;
  CountedStrings(const CountedStrings&) = delete;
  CountedStrings& operator=(const CountedStrings&) = delete;
  ~CountedStrings() { free(); }

  CALPOLESTR* putStrings() { return &strings_; }
  CADWORD* putCookies() { return &cookies_; }

  // After a failed call nothing was handed over, whatever stands in the outputs.
  void abandon() {
    strings_ = {};
    cookies_ = {};
  }

  ULONG stringCount() const { return strings_.pElems != nullptr ? strings_.cElems : 0; }
  ULONG cookieCount() const { return cookies_.pElems != nullptr ? cookies_.cElems : 0; }
  CStdStr<wchar_t> string(ULONG index) const {
    return CStdStr<wchar_t>(index < stringCount() ? strings_.pElems[index] : nullptr);
  }
  DWORD cookie(ULONG index) const { return cookies_.pElems[index]; }

  void free() {
    for (ULONG i = 0; i < stringCount(); ++i)
      SysFreeString(strings_.pElems[i]);
    if (strings_.pElems != nullptr) CoTaskMemFree(strings_.pElems);
    if (cookies_.pElems != nullptr) CoTaskMemFree(cookies_.pElems);
    abandon();
  }

 private:
  CALPOLESTR strings_{};
  CADWORD cookies_{};
};

}  // namespace velt::propdata
