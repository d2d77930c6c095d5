#pragma once

// Dynamic rows come from plug-ins. What is thrown on the way to one of them counts as a refusal at the place where a
// refusal is passed over: it costs that row, and neither other rows nor the operation. Exhausted memory is not a refusal
// and ends the operation.

#include <utility>

#include "host/com/ComError.h"

namespace velt::propdata {

// What the call answers, or the refusal when the host throws.
template <class Result, class Call>
Result orRefused(Result refusal, Call&& call) {
  try {
    return std::forward<Call>(call)();
  } catch (const _com_error&) {
    return refusal;
  }
}

template <class Call>
void orRefused(Call&& call) {
  orRefused(false, [&] {
    std::forward<Call>(call)();
    return true;
  });
}

}  // namespace velt::propdata
