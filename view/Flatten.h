#pragma once

// Curves as lines from point to point.

#include <optional>
#include <span>
#include <vector>

#include "embedded/automation/geometry/EllipticalArc.h"
#include "embedded/automation/geometry/Spline.h"

namespace velt::view {

using automation::Vector2;

// How far lines may stray from a curve, in the units of the curve. 0 asks for a coarse picture whatever the size.
struct Tolerance {
  double value = 0;
};

// The points after the first one, which the caller has put there. Nothing for an arc that is not finite.
void appendArc(std::vector<Vector2>& points, const automation::EllipticalArc& arc, Tolerance tolerance);

// The point itself for a straight segment.
void appendBulge(std::vector<Vector2>& points, Vector2 from, Vector2 to, double bulge, Tolerance tolerance);

// All points, the first one included.
void appendSpline(std::vector<Vector2>& points, const automation::Spline& spline, Tolerance tolerance);

// A smooth curve through the points, as cubic pieces between them. It begins and ends in those directions, if they are
// told, else as straight as it can.
void appendCurveThrough(std::vector<Vector2>& points, std::span<const Vector2> through,
                        const std::optional<Vector2>& startDirection,
                        const std::optional<Vector2>& endDirection, Tolerance tolerance);

}  // namespace velt::view
