#pragma once

// Holds one BSTR. The null pointer is the empty string and an empty holder.

#include <string_view>

#include "holders/HandedOver.h"
#include "holders/PointerHolder.h"
#include "host/com/Bstr.h"

namespace velt::holders {

struct FreeString {
  void operator()(BSTR string) const { SysFreeString(string); }
};

class StringHolder : public PointerHolder<OLECHAR, FreeString> {
 public:
  StringHolder() = default;
  // Empty when memory is exhausted: to be checked where a null must not pass for the empty string.
  explicit StringHolder(std::wstring_view text) {
    attach(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
  }
  // Takes over a string that is the caller's.
  [[nodiscard]] static StringHolder owning(BSTR string) {
    StringHolder holder;
    holder.attach(string);
    return holder;
  }

  // Without the terminator, embedded NULs included; empty for null.
  [[nodiscard]] std::wstring_view view() const {
    return get() != nullptr ? std::wstring_view(get(), SysStringLen(get())) : std::wstring_view();
  }
};

}  // namespace velt::holders
