#pragma once

// The lines of a hatch pattern, cut to the area that they fill.

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "view/Canvas.h"

namespace velt::view {

// Parallel lines: one through the base, the next ones an offset further each.
struct LineFamily {
  double angle = 0;
  Vector2 base{};
  Vector2 offset{};
  // Positive for what is drawn, negative for what is left out; empty for a continuous line.
  std::vector<double> dashes{};
};

// How far a line lies from the next one.
[[nodiscard]] double spacingOf(const LineFamily& family);

// Adds the pieces of the lines that lie within an odd number of the loops, which are closed. Nothing, and false, when
// there would be more than `most` pieces. Dashes shorter than `shortest` in the mean are drawn as continuous lines.
bool appendHatchLines(std::vector<Outline>& lines, const LineFamily& family,
                      std::span<const std::vector<Vector2>> loops, double shortest, std::size_t most);

}  // namespace velt::view
