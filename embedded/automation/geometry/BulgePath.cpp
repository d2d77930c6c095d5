#include "embedded/automation/geometry/BulgePath.h"

#include <cmath>
#include <cstddef>

namespace velt::automation {
namespace {

// Calls `visit(from, to, bulge)` for every segment.
template <class Visit>
void forEachSegment(std::span<const BulgeVertex> path, bool closed, Visit&& visit) {
  for (std::size_t next = 1; next < path.size(); ++next) {
    visit(path[next - 1].point, path[next].point, path[next - 1].bulge);
  }
  if (closed && path.size() > 1) visit(path.back().point, path.front().point, path.back().bulge);
}

// Between an arc and its chord, which it shares with the straight path; positive to the right of the chord.
double segmentArea(double chord, double bulge) {
  // Where the arc is nearly straight, the difference below would lose its digits.
  constexpr double nearlyStraight = 1e-3;
  const double square = bulge * bulge;
  if (std::abs(bulge) < nearlyStraight) return chord * chord * bulge * (1.0 / 3 + square / 15);
  const double radius = chord * (1 + square) / (4 * bulge);
  const double sweep = 4 * std::atan(bulge);
  return radius * radius / 2 * (sweep - std::sin(sweep));
}

}  // namespace

double pathLength(std::span<const BulgeVertex> path, bool closed) {
  double total = 0;
  forEachSegment(path, closed, [&](Vector2 from, Vector2 to, double bulge) {
    const double chord = length(to - from);
    const bool straight = std::fpclassify(bulge) == FP_ZERO;
    total += straight ? chord : chord * (1 + bulge * bulge) * std::atan(bulge) / bulge;
  });
  return total;
}

double signedPathArea(std::span<const BulgeVertex> path, bool closed) {
  if (path.size() < 2) return 0;
  // Far from the origin the products would be huge and their sum small.
  const Vector2 origin = path.front().point;
  double total = 0;
  forEachSegment(path, closed, [&](Vector2 from, Vector2 to, double bulge) {
    total += cross(from - origin, to - origin) / 2 + segmentArea(length(to - from), bulge);
  });
  return total;
}

}  // namespace velt::automation
