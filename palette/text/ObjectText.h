#pragma once

// The text of an object that is a property's value.

#include <string>

#include "host/com/IDispatch.h"

namespace velt::palette {

// A color by its name, its index or its parts; hyperlinks by their addresses. Empty for null, "(object)" for any other.
std::string objectText(IDispatch* object);

}  // namespace velt::palette
