#pragma once

// Upright rectangles in a plane.

#include <algorithm>
#include <limits>

#include "embedded/automation/geometry/Vector.h"

namespace velt::automation {

// Empty until something is included.
struct Box {
  Vector2 low{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
  Vector2 high{std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()};

  void include(Vector2 point) {
    low = {std::min(low.x, point.x), std::min(low.y, point.y)};
    high = {std::max(high.x, point.x), std::max(high.y, point.y)};
  }
  void include(const Box& box) {
    include(box.low);
    include(box.high);
  }
  // By so much on every side.
  [[nodiscard]] Box grown(double by) const { return {low - Vector2{by, by}, high + Vector2{by, by}}; }
  // Borders count.
  [[nodiscard]] bool meets(const Box& other) const {
    return low.x <= other.high.x && other.low.x <= high.x && low.y <= other.high.y && other.low.y <= high.y;
  }
  [[nodiscard]] double size() const { return high.x < low.x ? 0 : length(high - low); }
};

}  // namespace velt::automation
