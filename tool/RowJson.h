#pragma once

// Rows as JSON, for programs.

#include <nlohmann/json.hpp>

#include "palette/Palette.h"

namespace velt::tool {

// The natural JSON value; null for nothing.
nlohmann::ordered_json valueJson(const palette::PlainValue& value);

// Every field of the record under its own name, `value` as the natural JSON value, and `text`. An entity is told by its
// handle.
nlohmann::ordered_json rowJson(const palette::Row& row, const palette::NumberStyle& style);

}  // namespace velt::tool
