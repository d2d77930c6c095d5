#pragma once

// Objects that stand inside values, as text.

#include <string>

#include "host/com/IDispatch.h"

namespace velt::palette {

// A color by its name, its index or its parts; hyperlinks by their addresses. Empty for null, "(object)" for any other.
std::string objectText(IDispatch* object);

}  // namespace velt::palette
