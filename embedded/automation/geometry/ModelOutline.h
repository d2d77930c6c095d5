#pragma once

// How large a flat region is whose outline stands in a modeller's text.

#include "embedded/automation/geometry/ModelText.h"

namespace velt::automation {

struct RegionSize {
  double area = 0;
  // Of all loops, those of holes included.
  double perimeter = 0;
};

// For faces of one plane, bounded by straight pieces and arcs of ellipses; exact but for rounding. Throws ModelError,
// or BoundaryError, rather than give a figure that would be wrong: another shape, or parts that do not fit each other.
[[nodiscard]] RegionSize sizeOfRegion(const ModelText& text);

}  // namespace velt::automation
