#pragma once

// Rows as JSON, for programs.

#include <nlohmann/json.hpp>

#include "palette/Palette.h"

namespace velt::tool {

// The value as JSON: a number, a text, true or false; null for nothing.
nlohmann::ordered_json valueJson(const palette::PlainValue& value);

// Every field of the record under its own name, `value` as above, but null for a row that varies, and `text` as a palette would show it. Entities are
// given by their handles.
nlohmann::ordered_json rowJson(const palette::Row& row, const palette::NumberStyle& style);

}  // namespace velt::tool
