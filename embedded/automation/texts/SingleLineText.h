#pragma once

// The rows of texts of a single line, which attributes and their definitions are, too.

#include <span>

#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

extern const std::span<const PropertyRow> singleLineRows;

}  // namespace velt::automation
