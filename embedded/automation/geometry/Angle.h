#pragma once

// Angles: radians in values, degrees where drawings store them.

#include <cmath>
#include <limits>
#include <numbers>

namespace velt::automation {

inline constexpr double fullTurn = 2 * std::numbers::pi;

constexpr double radians(double degrees) {
  return degrees / 180 * std::numbers::pi;
}
constexpr double degrees(double radians) {
  return radians / std::numbers::pi * 180;
}

// What a drawing stores for an angle: round degrees where the angle comes from round ones and the radians between them
// are to blame for what is left.
inline double storedDegreesOf(double angle) {
  constexpr double roundest = 1e9;
  const double exact = degrees(angle);
  const double rounded = std::round(exact * roundest) / roundest;
  const double slack = 4 * std::numeric_limits<double>::epsilon() * std::abs(angle);
  return std::abs(radians(rounded) - angle) <= slack ? rounded : exact;
}

// The same direction, from 0 up to, not including, a full turn.
inline double normalizedAngle(double angle) {
  const double rest = std::fmod(angle, fullTurn);
  const double positive = rest < 0 ? rest + fullTurn : rest;
  return positive < fullTurn ? positive : 0.0;
}

// How far it is counterclockwise from one direction to the other, from above 0 to a full turn: an arc whose ends
// coincide is a full circle.
inline double sweepBetween(double start, double end) {
  const double sweep = normalizedAngle(end - start);
  return sweep > 0 ? sweep : fullTurn;
}

}  // namespace velt::automation
