#pragma once

// Areas that closed loops bound, as hatches fill them.

#include <span>
#include <stdexcept>
#include <variant>
#include <vector>

#include "embedded/automation/geometry/BulgePath.h"
#include "embedded/automation/geometry/EllipticalArc.h"
#include "embedded/automation/geometry/Spline.h"

namespace velt::automation {

struct LineEdge {
  Vector2 from;
  Vector2 to;
};

using BoundaryEdge = std::variant<LineEdge, EllipticalArc, Spline>;

// One closed loop: a polyline, or edges that follow each other. An edge may stand the wrong way round.
using BoundaryLoop = std::variant<std::vector<BulgeVertex>, std::vector<BoundaryEdge>>;

// What is filled where loops lie inside others.
enum class IslandStyle {
  // Every second ring.
  Normal,
  // Only the outermost ring.
  Outer,
  // Everything within the outermost loops.
  Ignore,
};

// Why an area cannot be told.
class BoundaryError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Exact but for rounding (and twelve digits for splines with weights). Throws BoundaryError rather than give a figure
// that would be wrong: edges do not meet, loops cross themselves or each other.
// Takes n log n steps for n corners, and one more for each two edges that lie near each other and for each edge of a
// loop at the height of one that may lie inside; throws NotComputed where that would be too many.
[[nodiscard]] double boundedArea(std::span<const BoundaryLoop> loops, IslandStyle style);

}  // namespace velt::automation
