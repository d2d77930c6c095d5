#pragma once

// B-spline curves in a plane, rational ones included.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "embedded/automation/geometry/Effort.h"
#include "embedded/automation/geometry/Vector.h"

namespace velt::automation {

class Spline {
 public:
  // Nothing unless the knots ascend, there are degree + 1 more of them than control points, the curve has a length
  // in its parameter, and the weights are positive and as many as the points (or none at all).
  [[nodiscard]] static std::optional<Spline> make(std::int64_t degree, std::vector<double> knots,
                                                  std::vector<Vector2> points, std::vector<double> weights);

  // What it takes to find one point of the curve.
  static constexpr std::size_t stepsForPoint = 5;

  [[nodiscard]] std::size_t pointCount() const { return points_.size(); }
  [[nodiscard]] double firstParameter() const { return knots_[degree_]; }
  [[nodiscard]] double lastParameter() const { return knots_[points_.size()]; }
  [[nodiscard]] Vector2 at(double parameter) const { return evaluate(parameter).point; }
  [[nodiscard]] Vector2 derivativeAt(double parameter) const { return evaluate(parameter).derivative; }
  [[nodiscard]] Vector2 first() const { return at(firstParameter()); }
  [[nodiscard]] Vector2 last() const { return at(lastParameter()); }

  // The pieces between two different knots: on each the curve is smooth.
  [[nodiscard]] std::vector<std::pair<double, double>> spans() const;
  [[nodiscard]] Spline movedBy(Vector2 offset) const;
  // The same curve over parameters that begin at 0.
  [[nodiscard]] Spline fromZero() const;
  // Of the lines from control point to control point.
  [[nodiscard]] double polygonLength() const;
  // What the curve adds to the signed area of a boundary: half the integral of x dy - y dx. Exact but for rounding
  // when there are no weights. With weights it is refined until two steps agree to twelve digits; nothing when they
  // do not come to agree. Throws NotComputed when that takes too long.
  [[nodiscard]] std::optional<double> boundaryIntegral(Effort& effort) const;

 private:
  struct Evaluated {
    Vector2 point;
    Vector2 derivative;
  };

  Spline(std::size_t degree, std::vector<double> knots, std::vector<Vector2> points,
         std::vector<double> weights)
      : degree_(degree), knots_(std::move(knots)), points_(std::move(points)), weights_(std::move(weights)) {}

  [[nodiscard]] Evaluated evaluate(double parameter) const;
  [[nodiscard]] double integralBetween(double from, double to) const;

  std::size_t degree_;
  std::vector<double> knots_;
  std::vector<Vector2> points_;
  // Empty: all the same.
  std::vector<double> weights_;
};

}  // namespace velt::automation
