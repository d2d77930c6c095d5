#pragma once

// What the geometry of several classes needs to read.

#include "embedded/automation/geometry/ObjectFrame.h"
#include "embedded/automation/geometry/Vector.h"
#include "embedded/database/Lens.h"

namespace velt::automation {

inline Vector3 vectorOf(const database::Point& point) {
  return {point[0], point[1], point[2]};
}

inline Vector3 pointAt(const database::Lens& lens, int code, std::string_view subclass,
                       const Vector3& otherwise = {}) {
  Vector3 point = otherwise;
  lens.readPoint(code, subclass, point.x, point.y, point.z);
  return point;
}

// The normal that an entity stores under 210, else the world's Z axis.
inline Vector3 normalOf(const database::Lens& lens, std::string_view subclass) {
  return pointAt(lens, 210, subclass, {0, 0, 1});
}

// The plane of a flat entity.
inline ObjectFrame frameOf(const database::Lens& lens, std::string_view subclass) {
  return ObjectFrame(normalOf(lens, subclass));
}

}  // namespace velt::automation
