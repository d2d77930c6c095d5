#pragma once

// The boundary of a hatch, as its record stores it.

#include <vector>

#include "embedded/automation/geometry/Boundary.h"
#include "embedded/database/Lens.h"

namespace velt::automation {

// How the ends of elliptic edges are to be understood: writers of drawings do not agree.
enum class EllipseEnds { Angles, Parameters };

// The loops in the plane of the hatch. Throws BoundaryError for a boundary that is cut short or makes no sense.
[[nodiscard]] std::vector<BoundaryLoop> hatchLoops(const database::Lens& hatch, EllipseEnds ends);

// What the hatch fills. Throws BoundaryError when that cannot be told exactly, and NotComputed when it takes too long.
[[nodiscard]] double hatchArea(const database::Lens& hatch);

}  // namespace velt::automation
