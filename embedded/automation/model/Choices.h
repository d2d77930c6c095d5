#pragma once

// The predefined values of properties.

#include <cstddef>
#include <string>

#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

// How many choices the row offers now. A row without choices has none, but so may one whose table is empty.
[[nodiscard]] std::size_t choiceCount(const Subject& subject, const PropertyRow& row);

// The index is below the count.

// As shown to people.
[[nodiscard]] std::wstring choiceLabel(const Subject& subject, const PropertyRow& row, std::size_t index);

// What to put for it: a name, or a number for enumerations and colors.
[[nodiscard]] Value choiceValue(const Subject& subject, const PropertyRow& row, std::size_t index);

}  // namespace velt::automation
