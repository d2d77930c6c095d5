#pragma once

// Circles, ellipses and their arcs in a plane.

#include "embedded/automation/geometry/Vector.h"

namespace velt::automation {

// The points center + cos(t) * major + sin(t) * minor for t from `start` over `sweep`. A positive sweep with the minor
// axis to the left of the major one runs counterclockwise.
struct EllipticalArc {
  Vector2 center;
  Vector2 major;
  Vector2 minor;
  double start = 0;
  double sweep = 0;

  // The arc of a polyline segment: the bulge is the tangent of a quarter of the angle, negative for clockwise. It must
  // not be zero, and the two points must differ.
  [[nodiscard]] static EllipticalArc ofBulge(Vector2 from, Vector2 to, double bulge);

  [[nodiscard]] Vector2 at(double parameter) const;
  [[nodiscard]] Vector2 first() const { return at(start); }
  [[nodiscard]] Vector2 last() const { return at(start + sweep); }
  [[nodiscard]] EllipticalArc reversed() const { return {center, major, minor, start + sweep, -sweep}; }
  [[nodiscard]] EllipticalArc movedBy(Vector2 offset) const {
    return {center + offset, major, minor, start, sweep};
  }
  // What it adds to the signed area of a boundary: half the integral of x dy - y dx.
  [[nodiscard]] double boundaryIntegral() const;
};

// The direction in which an ellipse shows the point of that parameter, and the reverse; both seen from the center
// against the major axis. They agree at every quarter turn, and keep whole turns.
[[nodiscard]] double angleOfParameter(double parameter, double ratio);
[[nodiscard]] double parameterOfAngle(double angle, double ratio);

// Between the arc of that sweep and its chord, of a circle or (with the two half axes) an ellipse.
[[nodiscard]] double segmentArea(double majorRadius, double minorRadius, double sweep);

}  // namespace velt::automation
