#pragma once

// What the classes of dimensions read of their geometry.

#include <cmath>
#include <cstdint>
#include <numbers>

#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"

namespace velt::automation {

// The points of a kind stand after the marker of that kind or of one that it derives from, so all are looked through.
inline constexpr const char* dimension = "*";

// The kind stands in the lowest three bits of the flags.
template <std::int64_t Kind>
bool isDimension(const database::Drawing& drawing, std::uint32_t record) {
  return (database::Lens(drawing, record).integer(70, dimension, 0) & 7) == Kind;
}

// A point that is stored in world coordinates, as all of a dimension but the text's are.
constexpr Access dimensionPoint(int code) {
  return worldPoint(code, dimension);
}

inline Vector3 dimensionPointOf(const Subject& subject, int code) {
  return pointAt(subject.lens(), code, dimension);
}

// What was measured, times the linear scale of the style. A negative scale counts on sheets of paper only.
inline double scaledLength(const Subject& subject, double measured) {
  const double scale = DimensionStyle(subject).real(variables::linearScale);
  if (scale < 0 && subject.entity().space() != database::Space::Paper) return measured;
  return measured * std::abs(scale);
}

// As seen from above the dimension's plane.
inline Vector3 inDimensionPlane(const Subject& subject, const Vector3& inWorld) {
  return frameOf(subject.lens(), dimension).toObject(inWorld);
}

// In the plane, against its X axis.
inline double directionInPlane(const Subject& subject, const Vector3& from, const Vector3& to) {
  const Vector3 arm = inDimensionPlane(subject, to) - inDimensionPlane(subject, from);
  return std::atan2(arm.y, arm.x);
}

// The angle at the vertex that reaches from one point to another and has the third one inside.
inline double angleAround(const Subject& subject, const Vector3& vertex, const Vector3& first,
                          const Vector3& second, const Vector3& inside) {
  const double start = directionInPlane(subject, vertex, first);
  const double sweep = normalizedAngle(directionInPlane(subject, vertex, second) - start);
  const double reach = normalizedAngle(directionInPlane(subject, vertex, inside) - start);
  return reach <= sweep ? sweep : fullTurn - sweep;
}

}  // namespace velt::automation
