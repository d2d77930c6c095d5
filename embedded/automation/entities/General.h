#pragma once

// The rows that classes share.

#include <span>

#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

// Of every database object.
extern const std::span<const PropertyRow> objectRows;
// Of every entity; those of every object are among them.
extern const std::span<const PropertyRow> entityRows;

}  // namespace velt::automation
