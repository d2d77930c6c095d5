#pragma once

// The edge of functions that call the host directly and not through the layer.

#include <fmt/format.h>

#include "host/com/Cancellation.h"
#include "host/com/ComError.h"
#include "palette/Palette.h"

namespace velt::palette {

// Whether the message of an operation that failed says that the user has cancelled it.
inline bool tellsOfCancelling(std::wstring_view message) {
  return message == cancelledText;
}

// Throws for an operation of the layer that failed, with its message: Cancelled, or an Error that begins with `failure`.
[[noreturn]] inline void fail(std::string_view failure, const CStdStr<wchar_t>& message) {
  if (tellsOfCancelling(message.str())) throw Cancelled(toUtf8(message.str()));
  throw Error(
      fmt::format("{}: {}", failure, message.empty() ? "no reason was given" : toUtf8(message.str())));
}

// Makes an Error of what the host throws.
template <class Operation>
auto orError(Operation operation) {
  try {
    return operation();
  } catch (const _com_error& error) {
    const _bstr_t description = error.Description();
    if (tellsOfCancelling(static_cast<const wchar_t*>(description))) throw Cancelled(toUtf8(cancelledText));
    const std::string told = toUtf8(static_cast<const wchar_t*>(description));
    throw Error(told.empty() ? "the properties could not be asked for or written, and nothing says why" : told);
  }
}

}  // namespace velt::palette
