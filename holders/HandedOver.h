#pragma once

// What a call left in its outputs when it failed was not handed over: it is not given back, whatever stands there.
//
// Whoever looks at the result of a call looks at it through handedOver(), with the holders that the call was to fill:
//
//   InterfaceHolder<ITypeInfo> type;
//   if (!handedOver(object.GetTypeInfo(0, locale, type.put()), type)) return false;
//
// A holder that was filled by a call whose result is not looked at keeps what stands in it and gives it back: there the
// output alone counts. So it does where a function answers yes or no: a "no" is an answer.

#include <concepts>

#include "host/com/HResult.h"

namespace velt::holders {

// Whether the call succeeded. When it did not, the holders are empty afterwards. Takes no BOOL, whose 0 would pass for
// S_OK.
template <class... Holders>
[[nodiscard]] bool handedOver(std::same_as<HRESULT> auto result, Holders&... outputs) {
  if (SUCCEEDED(result)) return true;
  (static_cast<void>(outputs.detach()), ...);
  return false;
}

}  // namespace velt::holders
