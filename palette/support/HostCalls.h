#pragma once

// The edge of functions that call the host directly and not through the layer.

#include "host/com/ComError.h"
#include "palette/Palette.h"

namespace velt::palette {

// Makes an Error of what the host throws.
template <class Operation>
auto orError(Operation operation) {
  try {
    return operation();
  } catch (const _com_error& error) {
    const std::string told = toUtf8(static_cast<const wchar_t*>(error.Description()));
    throw Error(told.empty() ? "a call of the host failed" : told);
  }
}

}  // namespace velt::palette
