#pragma once

// What type information tells of a property: the row's help, and why it cannot be changed where it cannot.

#include <string>

#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

// "Length of the line. Read-only: it follows from where it starts and ends."
// "Size of the mark. Read-only where the drawing stores how the dimension looks, which would stay what it is."
[[nodiscard]] std::wstring helpText(const PropertyRow& row);

}  // namespace velt::automation
