#pragma once

// Lengths in the units of a drawing.

#include <optional>
#include <string>
#include <string_view>

#include "palette/Palette.h"

namespace velt::palette {

std::string lengthText(double length, const NumberStyle& style);

// Every form that lengthText() makes is understood, and in any format a plain number and fractions; feet and inches only
// where they are the format. Nothing for any other text.
std::optional<double> lengthIn(std::string_view text, const NumberStyle& style);

}  // namespace velt::palette
