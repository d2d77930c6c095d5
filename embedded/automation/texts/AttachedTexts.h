#pragma once

// The attributes of a block reference, which are placed on their own and have to follow it. Part of a put: see Editor.h.

#include "embedded/automation/geometry/Vector.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

[[nodiscard]] bool hasAttachedTexts(const Subject& reference);

// Both throw Refusal for an attribute of several lines or in several scales, whose place is stored several times.

// Moves them by a vector of the world.
void moveAttachedTexts(const Subject& reference, const Vector3& by);

// Turns them about a point, given as the reference stores it, in the reference's plane. Throws Refusal for an attribute
// that lies in another plane.
void turnAttachedTexts(const Subject& reference, const Vector3& about, double angle);

}  // namespace velt::automation
