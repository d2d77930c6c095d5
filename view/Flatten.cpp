#include "view/Flatten.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "embedded/automation/geometry/Angle.h"

namespace velt::view {
namespace {

using automation::EllipticalArc;

constexpr double stepsForCoarseTurn = 32;
// Of one curve: however far it is zoomed in, no more can be seen at once.
constexpr double mostSteps = 4096;

bool isFinite(Vector2 point) {
  return std::isfinite(point.x) && std::isfinite(point.y);
}

std::size_t stepsFor(double sweep, double radius, Tolerance tolerance) {
  const double turns = std::abs(sweep) / automation::fullTurn;
  double forTurn = stepsForCoarseTurn;
  if (tolerance.value > 0) {
    // The middle of a chord lies this far inside of the circle: radius * (1 - cos(half the angle)).
    const double ratio = std::clamp(tolerance.value / radius, 1e-12, 0.5);
    forTurn = std::max(8.0, std::numbers::pi / std::acos(1 - ratio));
  }
  return static_cast<std::size_t>(std::clamp(std::ceil(forTurn * turns), 1.0, mostSteps));
}

// Halves a piece of a curve until its middle lies on the chord; a few pieces anyway, since the middle of an S does.
template <class Curve>
void refine(std::vector<Vector2>& points, const Curve& curve, double from, double to, Vector2 start,
            Vector2 end, double tolerance, int depth) {
  constexpr int deepest = 10;
  constexpr int shallowest = 2;
  const double middle = (from + to) / 2;
  const Vector2 there = curve(middle);
  const Vector2 chord = end - start;
  const double size = length(chord);
  const double gap = size > 0 ? std::abs(cross(chord, there - start)) / size : length(there - start);
  const bool isFlat = tolerance <= 0 || !(gap > tolerance);
  if (depth >= deepest || (depth >= shallowest && isFlat)) {
    points.push_back(end);
    return;
  }
  refine(points, curve, from, middle, start, there, tolerance, depth + 1);
  refine(points, curve, middle, to, there, end, tolerance, depth + 1);
}

}  // namespace

void appendArc(std::vector<Vector2>& points, const EllipticalArc& arc, Tolerance tolerance) {
  const double radius = std::max(length(arc.major), length(arc.minor));
  if (!isFinite(arc.center) || !std::isfinite(radius) || !std::isfinite(arc.start)
      || !std::isfinite(arc.sweep))
    return;
  const std::size_t steps = radius > 0 ? stepsFor(arc.sweep, radius, tolerance) : 1;
  points.reserve(points.size() + steps);
  for (std::size_t step = 1; step <= steps; ++step) {
    points.push_back(
        arc.at(arc.start + arc.sweep * (static_cast<double>(step) / static_cast<double>(steps))));
  }
}

void appendBulge(std::vector<Vector2>& points, Vector2 from, Vector2 to, double bulge, Tolerance tolerance) {
  // A flatter arc is not told from its chord.
  constexpr double flattest = 1e-9;
  if (std::abs(bulge) > flattest && std::isfinite(bulge) && from != to) {
    appendArc(points, EllipticalArc::ofBulge(from, to, bulge), tolerance);
    // Exactly where the next segment begins.
    if (!points.empty()) points.back() = to;
    return;
  }
  points.push_back(to);
}

void appendSpline(std::vector<Vector2>& points, const automation::Spline& spline, Tolerance tolerance) {
  const auto curve = [&](double parameter) { return spline.at(parameter); };
  points.push_back(spline.first());
  for (const auto& [from, to] : spline.spans()) {
    refine(points, curve, from, to, curve(from), curve(to), tolerance.value, 0);
  }
}

void appendCurveThrough(std::vector<Vector2>& points, std::span<const Vector2> through,
                        const std::optional<Vector2>& startDirection,
                        const std::optional<Vector2>& endDirection, Tolerance tolerance) {
  if (through.empty()) return;
  std::vector<Vector2> knots;
  for (const Vector2& point : through) {
    if (knots.empty() || knots.back() != point) knots.push_back(point);
  }
  points.push_back(knots.front());
  const std::size_t count = knots.size();
  if (count < 2) return;

  // The derivatives at the knots, over the length of the chords, so that the second derivatives agree at each knot:
  // a system of three diagonals, solved from the top down and back up.
  std::vector<double> chords(count - 1);
  for (std::size_t i = 0; i + 1 < count; ++i)
    chords[i] = length(knots[i + 1] - knots[i]);
  std::vector<double> upper(count);
  std::vector<Vector2> slopes(count);
  const auto unit = [](Vector2 arm) { return length(arm) > 0 ? (1 / length(arm)) * arm : arm; };
  const auto slopeOf = [&](std::size_t i) { return (1 / chords[i]) * (knots[i + 1] - knots[i]); };
  if (startDirection) {
    slopes[0] = unit(*startDirection);
  } else {
    upper[0] = 0.5;
    slopes[0] = 1.5 * slopeOf(0);
  }
  for (std::size_t i = 1; i < count; ++i) {
    const bool isLast = i + 1 == count;
    if (isLast && endDirection) {
      slopes[i] = unit(*endDirection);
      continue;
    }
    double lower = 0.5;
    double diagonal = 1;
    Vector2 right = 1.5 * slopeOf(i - 1);
    if (!isLast) {
      lower = chords[i];
      diagonal = 2 * (chords[i - 1] + chords[i]);
      upper[i] = chords[i - 1];
      right = 3 * (chords[i] * slopeOf(i - 1) + chords[i - 1] * slopeOf(i));
    }
    const double pivot = diagonal - lower * upper[i - 1];
    upper[i] /= pivot;
    slopes[i] = (1 / pivot) * (right - lower * slopes[i - 1]);
  }
  for (std::size_t i = count - 1; i-- > 0;)
    slopes[i] = slopes[i] - upper[i] * slopes[i + 1];

  for (std::size_t i = 0; i + 1 < count; ++i) {
    const Vector2 from = knots[i];
    const Vector2 to = knots[i + 1];
    const Vector2 leave = from + (chords[i] / 3) * slopes[i];
    const Vector2 arrive = to - (chords[i] / 3) * slopes[i + 1];
    const auto curve = [&](double t) {
      const double rest = 1 - t;
      return rest * rest * rest * from + 3 * rest * rest * t * leave + 3 * rest * t * t * arrive
             + t * t * t * to;
    };
    refine(points, curve, 0, 1, from, to, tolerance.value, 0);
  }
}

}  // namespace velt::view
