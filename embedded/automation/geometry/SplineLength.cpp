#include "embedded/automation/geometry/SplineLength.h"

#include <cmath>
#include <cstddef>
#include <iterator>

namespace velt::automation {
namespace {

class Refinement {
 public:
  // `slack`: how far halves may be from their whole although they are more than thirteen digits apart.
  Refinement(const SpaceSpline& curve, double slack, Effort& effort)
      : curve_(curve), slack_(slack), effort_(effort) {}

  double length() {
    constexpr int deepest = 20;
    double total = 0;
    for (const auto& [from, to] : curve_.flat.spans())
      total += refined(from, to, lengthBetween(from, to), deepest);
    return total;
  }

 private:
  [[nodiscard]] double speedAt(double parameter) const {
    const Vector2 flat = curve_.flat.derivativeAt(parameter);
    return std::hypot(flat.x, flat.y, curve_.height.derivativeAt(parameter).x);
  }

  // Gauss and Legendre's rule with five points.
  double lengthBetween(double from, double to) {
    constexpr double positions[] = {-0.9061798459386640, -0.5384693101056831, 0, 0.5384693101056831,
                                    0.9061798459386640};
    constexpr double weights[] = {0.2369268850561891, 0.4786286704993665, 0.5688888888888889,
                                  0.4786286704993665, 0.2369268850561891};
    effort_.spend(2 * Spline::stepsForPoint * std::size(positions));
    double total = 0;
    for (std::size_t i = 0; i < std::size(positions); ++i)
      total += weights[i] * speedAt((from + to) / 2 + (to - from) / 2 * positions[i]);
    return total * (to - from) / 2;
  }

  // Halved until the halves agree with the whole.
  double refined(double from, double to, double whole, int depth) {
    const double middle = (from + to) / 2;
    const double first = lengthBetween(from, middle);
    const double second = lengthBetween(middle, to);
    const double apart = std::abs(first + second - whole);
    if (depth == 0 || apart <= 1e-13 * (first + second) || apart <= slack_) return first + second;
    return refined(from, middle, first, depth - 1) + refined(middle, to, second, depth - 1);
  }

  const SpaceSpline& curve_;
  double slack_;
  Effort& effort_;
};

// Where the curve's own size and its place are of different orders, its points and parameters are so rounded that halves
// never agree with their whole. Seen from its own beginning they do.
SpaceSpline fromItsBeginning(const SpaceSpline& curve) {
  const auto moved = [](const Spline& spline) {
    return spline.movedBy(Vector2{} - spline.first()).fromZero();
  };
  return {moved(curve.flat), moved(curve.height)};
}

}  // namespace

double splineLength(const SpaceSpline& curve, Effort& effort) {
  const Effort whole = effort;
  try {
    return Refinement(curve, 0, effort).length();
  } catch (const NotComputed&) {
    effort = whole;
    const SpaceSpline moved = fromItsBeginning(curve);
    const double polygon = moved.flat.polygonLength() + moved.height.polygonLength();
    return Refinement(moved, 1e-14 * polygon, effort).length();
  }
}

}  // namespace velt::automation
