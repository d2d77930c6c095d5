#pragma once

// Polylines of straight and circular segments.

#include <span>

#include "embedded/automation/geometry/Vector.h"

namespace velt::automation {

struct BulgeVertex {
  Vector2 point;
  // Of the segment to the next vertex.
  double bulge = 0;
};

// Of all segments, the one that closes the path included if there is one.
[[nodiscard]] double pathLength(std::span<const BulgeVertex> path, bool closed);

// Counterclockwise positive. The area of an open path is the one that a straight segment back to the start would
// enclose; the bulge of the last vertex then counts for nothing.
[[nodiscard]] double signedPathArea(std::span<const BulgeVertex> path, bool closed);

}  // namespace velt::automation
