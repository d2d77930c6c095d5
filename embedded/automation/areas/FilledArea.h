#pragma once

// What flat filled areas of three or four corners have in common.

#include <span>

#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

extern const std::span<const PropertyRow> filledAreaRows;

}  // namespace velt::automation
