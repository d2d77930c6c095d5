#pragma once

// Rows as JSON, for programs.

#include <nlohmann/json.hpp>

#include "palette/Palette.h"
#include "tool/Units.h"

namespace velt::tool {

// The value as JSON: a number, a text, true or false; null for nothing.
nlohmann::ordered_json valueJson(const palette::PlainValue& value);

// Which fields of a row's record programs get.
enum class RowFields {
  // Those that mean something outside of this system.
  known,
  // All of them, for who develops palettes, plug-ins or hosts.
  all
};

// The fields of the record, each under its own name: `value` as above, but null for a row that varies. Beside them `text`, as
// a palette would show it, and `unit`, null where there is none, and
// `isDynamic`. Entities are given by their handles.
nlohmann::ordered_json rowJson(const palette::Row& row, const palette::NumberStyle& style, const Units& units,
                               RowFields fields);

// Null for no unit.
nlohmann::ordered_json unitJson(const std::string& unit);

}  // namespace velt::tool
