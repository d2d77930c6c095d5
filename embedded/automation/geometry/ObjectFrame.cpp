#include "embedded/automation/geometry/ObjectFrame.h"

namespace velt::automation {
namespace {

constexpr Vector3 worldY{0, 1, 0};
constexpr Vector3 worldZ{0, 0, 1};

// Below this, a normal counts as parallel to the world's Z axis. The published rule fixes the number: a reader with
// another one would turn the axes by some angle.
constexpr double nearlyVertical = 1.0 / 64;

}  // namespace

ObjectFrame::ObjectFrame(const Vector3& normal) {
  z_ = direction(normal, worldZ);
  if (z_ == worldZ) return;  // nearly every entity; the coordinates then pass through unrounded
  const bool vertical = std::abs(z_.x) < nearlyVertical && std::abs(z_.y) < nearlyVertical;
  x_ = direction(cross(vertical ? worldY : worldZ, z_), {1, 0, 0});
  y_ = direction(cross(z_, x_), worldY);
}

Vector3 ObjectFrame::toWorld(const Vector3& inObject) const {
  if (z_ == worldZ) return inObject;
  return inObject.x * x_ + inObject.y * y_ + inObject.z * z_;
}

Vector3 ObjectFrame::toObject(const Vector3& inWorld) const {
  if (z_ == worldZ) return inWorld;
  return {dot(inWorld, x_), dot(inWorld, y_), dot(inWorld, z_)};
}

}  // namespace velt::automation
