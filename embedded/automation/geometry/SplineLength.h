#pragma once

// How long spline curves in space are.

#include "embedded/automation/geometry/Effort.h"
#include "embedded/automation/geometry/Spline.h"

namespace velt::automation {

// A curve in space: what it is in a plane and, over the same parameters, how high it is above it (the height is the X
// of its points).
struct SpaceSpline {
  Spline flat;
  Spline height;
};

// To twelve digits or more. Throws NotComputed when that takes more than the effort, twice: once as the curve is, and once
// seen from its own beginning.
[[nodiscard]] double splineLength(const SpaceSpline& curve, Effort& effort);

}  // namespace velt::automation
