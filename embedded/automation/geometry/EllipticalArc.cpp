#include "embedded/automation/geometry/EllipticalArc.h"

#include <cmath>

#include "embedded/automation/geometry/Angle.h"

namespace velt::automation {
namespace {

// atan2 keeps to one turn; this adds the turns that the other angle is away.
double inTheTurnOf(double angle, double near) {
  return angle + fullTurn * std::round((near - angle) / fullTurn);
}

}  // namespace

EllipticalArc EllipticalArc::ofBulge(Vector2 from, Vector2 to, double bulge) {
  const Vector2 chord = to - from;
  // From the middle of the chord to the center, measured against the chord turned left.
  const double reach = (1 - bulge * bulge) / (4 * bulge);
  const Vector2 center = from + 0.5 * chord + reach * perpendicular(chord);
  const Vector2 radius = from - center;
  return {center, radius, perpendicular(radius), 0, 4 * std::atan(bulge)};
}

Vector2 EllipticalArc::at(double parameter) const {
  return center + std::cos(parameter) * major + std::sin(parameter) * minor;
}

double EllipticalArc::boundaryIntegral() const {
  return (cross(center, last() - first()) + cross(major, minor) * sweep) / 2;
}

double angleOfParameter(double parameter, double ratio) {
  return inTheTurnOf(std::atan2(ratio * std::sin(parameter), std::cos(parameter)), parameter);
}

double parameterOfAngle(double angle, double ratio) {
  return inTheTurnOf(std::atan2(std::sin(angle), ratio * std::cos(angle)), angle);
}

double segmentArea(double majorRadius, double minorRadius, double sweep) {
  return majorRadius * minorRadius / 2 * (sweep - std::sin(sweep));
}

}  // namespace velt::automation
