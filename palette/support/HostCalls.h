#pragma once

// What stands at the edge of functions that call the host other than through the layer.

#include "host/com/ComError.h"
#include "palette/Palette.h"

namespace velt::palette {

// What the host throws becomes an Error.
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
