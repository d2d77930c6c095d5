#pragma once

// Points and directions, in space and in a plane.

#include <cmath>

namespace velt::automation {

struct Vector2 {
  double x = 0;
  double y = 0;

  friend constexpr bool operator==(const Vector2&, const Vector2&) = default;
};

struct Vector3 {
  double x = 0;
  double y = 0;
  double z = 0;

  friend constexpr bool operator==(const Vector3&, const Vector3&) = default;
};

constexpr Vector2 operator+(Vector2 a, Vector2 b) {
  return {a.x + b.x, a.y + b.y};
}
constexpr Vector2 operator-(Vector2 a, Vector2 b) {
  return {a.x - b.x, a.y - b.y};
}
constexpr Vector2 operator*(double factor, Vector2 a) {
  return {factor * a.x, factor * a.y};
}
constexpr double dot(Vector2 a, Vector2 b) {
  return a.x * b.x + a.y * b.y;
}
// Twice the signed area of the triangle between the origin, a and b.
constexpr double cross(Vector2 a, Vector2 b) {
  return a.x * b.y - a.y * b.x;
}
inline double length(Vector2 a) {
  return std::hypot(a.x, a.y);
}
// A quarter turn to the left.
constexpr Vector2 perpendicular(Vector2 a) {
  return {-a.y, a.x};
}

constexpr Vector3 operator+(const Vector3& a, const Vector3& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr Vector3 operator-(const Vector3& a, const Vector3& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr Vector3 operator*(double factor, const Vector3& a) {
  return {factor * a.x, factor * a.y, factor * a.z};
}
constexpr double dot(const Vector3& a, const Vector3& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}
constexpr Vector3 cross(const Vector3& a, const Vector3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vector3& a) {
  return std::hypot(a.x, a.y, a.z);
}

// The direction alone, of length 1; `otherwise` for a vector without a direction.
inline Vector3 direction(const Vector3& a, const Vector3& otherwise) {
  const double size = length(a);
  return size > 0 && std::isfinite(size) ? (1 / size) * a : otherwise;
}

}  // namespace velt::automation
