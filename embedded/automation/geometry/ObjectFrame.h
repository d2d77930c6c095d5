#pragma once

// The coordinate system of flat entities.

#include "embedded/automation/geometry/Vector.h"

namespace velt::automation {

// A circle, a text or a light-weight polyline is stored in coordinates of its own plane, of which the drawing tells
// only the normal. The other two axes follow from it by the arbitrary-axis rule, so that every reader finds the same.
class ObjectFrame {
 public:
  // A normal without a direction counts as the world's Z axis.
  explicit ObjectFrame(const Vector3& normal);

  [[nodiscard]] Vector3 toWorld(const Vector3& inObject) const;
  [[nodiscard]] Vector3 toObject(const Vector3& inWorld) const;
  [[nodiscard]] const Vector3& normal() const noexcept { return z_; }

 private:
  Vector3 x_{1, 0, 0};
  Vector3 y_{0, 1, 0};
  Vector3 z_{0, 0, 1};
};

}  // namespace velt::automation
