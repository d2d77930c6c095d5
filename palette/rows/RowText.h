#pragma once

// How a row's value is shown: as text for people and as JSON for programs.

#include <nlohmann/json.hpp>
#include <string>

#include "embedded/database/Drawing.h"
#include "propdata/VeltPropData.h"

namespace velt::tool {

// The drawing's own precision, decimal places of lengths and of angles in degrees.
struct NumberStyle {
  int lengthPlaces = 4;
  int anglePlaces = 0;
};

NumberStyle numberStyleOf(const database::Drawing& drawing);

inline constexpr const char* variesText = "*VARIES*";

// As a palette shows it: *VARIES*, the choice's label, angles in degrees, colors by name.
std::string valueText(const PROPINFO& row, const NumberStyle& style);

// The value as the natural JSON value; objects as their text.
nlohmann::ordered_json valueJson(const PROPINFO& row, const NumberStyle& style);

// Every field of the record under its own name, `value` as the natural JSON value, and `text`.
nlohmann::ordered_json rowJson(const PROPINFO& row, const NumberStyle& style);

std::string guidText(const GUID& guid);

}  // namespace velt::tool
