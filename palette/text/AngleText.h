#pragma once

// Angles in the units of a drawing. A direction is an angle that begins at the drawing's direction 0; any other angle
// begins at something of the entity itself.

#include <optional>
#include <string>
#include <string_view>

#include "palette/Palette.h"

namespace velt::palette {

// `angle` in radians, counterclockwise, of a direction from the x axis.
std::string angleText(double angle, bool isDirection, const NumberStyle& style);

// In radians. Every form that angleText() makes is understood, whatever the drawing's format: 45.5, 45.5°, 45d30', 50g,
// 1.5 rad, and of directions N 45° E; a plain number is in the unit of the format. Nothing for any other text.
std::optional<double> angleIn(std::string_view text, bool isDirection, const NumberStyle& style);

}  // namespace velt::palette
