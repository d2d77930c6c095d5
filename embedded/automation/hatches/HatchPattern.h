#pragma once

// Turning and scaling the stored lines of a hatch. Part of a put: see Editor.h.
//
// A drawing stores of a pattern not only its name, angle and scale, but also every family of its lines as it comes out
// of them; all of these have to change together.

#include "embedded/automation/geometry/Vector.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// Turns all families by the angle and scales them, both about the origin of the pattern, in the plane of the hatch.
// Throws Refusal when the stored lines are incomplete.
void changePatternLines(const Subject& hatch, const Vector2& origin, double angle, double factor);

}  // namespace velt::automation
