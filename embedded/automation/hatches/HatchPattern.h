#pragma once

// The pattern of a hatch, and changing it. What changes it is part of a put: see Editor.h.
//
// A drawing stores of a pattern not only its name, angle and scale, but also every family of its lines as it comes out
// of them; all of these have to change together.

#include <string>
#include <string_view>
#include <vector>

#include "embedded/automation/geometry/Vector.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// Turns all families by the angle and scales them, both about the origin of the pattern, in the plane of the hatch.
// Throws Refusal when the stored lines are incomplete.
void changePatternLines(const Subject& hatch, const Vector2& origin, double angle, double factor);

// Where the pattern begins, in the plane of the hatch.
[[nodiscard]] Vector3 patternOrigin(const database::Lens& hatch);

// The names of the patterns that a hatch of the drawing can be filled with: the predefined ones, and then those that
// only hatches of the drawing have. They stay where they are until the next call.
[[nodiscard]] const std::vector<std::wstring>& patternNames(const Subject& hatch);

// Fills the hatch, which has no gradient, with the pattern of that name: at the angle that it has and, where a pattern
// had a scale before, at this one. A predefined pattern is as large as those that the drawing has already, else as
// its unit of patterns says. Throws Refusal when there is no such pattern, and when the hatch lacks what tells its
// pattern.
void fillWithPattern(const Subject& hatch, std::wstring_view name);

// Gives plain lines a second family across the first, or takes it away. Throws Refusal when the stored lines are not
// those of such a pattern.
void crossPlainLines(const Subject& hatch, bool crossed);

}  // namespace velt::automation
