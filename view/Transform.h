#pragma once

// From the coordinates of an entity to those of the space that is drawn.

#include <algorithm>
#include <cmath>

#include "embedded/automation/geometry/ObjectFrame.h"
#include "embedded/automation/geometry/Vector.h"

namespace velt::view {

using automation::Vector2;
using automation::Vector3;

// An affine map of space. What is drawn is seen from above: flat() leaves the height away.
struct Transform {
  Vector3 x{1, 0, 0};
  Vector3 y{0, 1, 0};
  Vector3 z{0, 0, 1};
  Vector3 origin{};

  [[nodiscard]] static Transform moved(const Vector3& by) { return {.origin = by}; }
  [[nodiscard]] static Transform scaled(const Vector3& by) {
    return {{by.x, 0, 0}, {0, by.y, 0}, {0, 0, by.z}, {}};
  }
  [[nodiscard]] static Transform rotated(double angle) {
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    return {{cosine, sine, 0}, {-sine, cosine, 0}, {0, 0, 1}, {}};
  }
  // From the plane of a flat entity to the world.
  [[nodiscard]] static Transform ofFrame(const automation::ObjectFrame& frame) {
    return {frame.toWorld({1, 0, 0}), frame.toWorld({0, 1, 0}), frame.toWorld({0, 0, 1}), {}};
  }
  [[nodiscard]] static Transform toFrame(const automation::ObjectFrame& frame) {
    return {frame.toObject({1, 0, 0}), frame.toObject({0, 1, 0}), frame.toObject({0, 0, 1}), {}};
  }

  // Of a direction, which has no place.
  [[nodiscard]] Vector3 along(const Vector3& arm) const { return arm.x * x + arm.y * y + arm.z * z; }
  [[nodiscard]] Vector3 at(const Vector3& point) const { return origin + along(point); }
  [[nodiscard]] Vector2 flat(const Vector3& point) const {
    const Vector3 there = at(point);
    return {there.x, there.y};
  }
  [[nodiscard]] Vector2 flatAlong(const Vector3& arm) const {
    const Vector3 there = along(arm);
    return {there.x, there.y};
  }
  // First the other one, then this.
  [[nodiscard]] Transform after(const Transform& first) const {
    return {along(first.x), along(first.y), along(first.z), at(first.origin)};
  }

  // How much larger than stored something flat is seen.
  [[nodiscard]] double scale() const {
    const double area = std::abs(automation::cross(Vector2{x.x, x.y}, Vector2{y.x, y.y}));
    return area > 0 ? std::sqrt(area) : std::max(std::hypot(x.x, x.y), std::hypot(y.x, y.y));
  }
};

}  // namespace velt::view
