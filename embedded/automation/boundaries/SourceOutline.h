#pragma once

// The curves that hatches are made from, as hatches store them: in the plane of the hatch.

#include <cstdint>
#include <optional>
#include <vector>

#include "embedded/automation/geometry/EllipticalArc.h"
#include "embedded/automation/geometry/ObjectFrame.h"
#include "embedded/database/Drawing.h"

namespace velt::automation {

// A straight line where there is no bulge.
struct OutlineSegment {
  Vector2 from;
  Vector2 to;
  double bulge = 0;

  [[nodiscard]] Vector2 middle() const {
    return from + 0.5 * (to - from) - bulge / 2 * perpendicular(to - from);
  }
  friend bool operator==(const OutlineSegment&, const OutlineSegment&) = default;
};

struct SourceOutline {
  // Of a polyline, one after the other.
  std::vector<OutlineSegment> segments{};
  // Of a circle or a whole ellipse, which have no segments.
  std::optional<EllipticalArc> whole{};
  // Over the origin, along the normal of the plane.
  double height = 0;
};

// Nothing for an entity that is not a circle, a whole ellipse or a flat polyline that is not smoothed, and for one whose
// plane is not parallel to this one.
[[nodiscard]] std::optional<SourceOutline> sourceOutline(const database::Drawing& drawing,
                                                         std::uint32_t record, const ObjectFrame& plane);

}  // namespace velt::automation
