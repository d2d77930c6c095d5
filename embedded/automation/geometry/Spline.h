#pragma once

// B-spline curves in a plane, rational ones included.

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "embedded/automation/geometry/Vector.h"

namespace velt::automation {

class Spline {
 public:
  // Nothing unless the knots ascend, there are degree + 1 more of them than control points, the curve has a length
  // in its parameter, and the weights are positive and as many as the points (or none at all).
  [[nodiscard]] static std::optional<Spline> make(int degree, std::vector<double> knots,
                                                  std::vector<Vector2> points, std::vector<double> weights);

  [[nodiscard]] double firstParameter() const { return knots_[degree_]; }
  [[nodiscard]] double lastParameter() const { return knots_[points_.size()]; }
  [[nodiscard]] Vector2 at(double parameter) const { return evaluate(parameter).point; }
  [[nodiscard]] Vector2 derivativeAt(double parameter) const { return evaluate(parameter).derivative; }
  [[nodiscard]] Vector2 first() const { return at(firstParameter()); }
  [[nodiscard]] Vector2 last() const { return at(lastParameter()); }

  // The pieces between two different knots: on each the curve is smooth.
  [[nodiscard]] std::vector<std::pair<double, double>> spans() const;
  [[nodiscard]] Spline movedBy(Vector2 offset) const;
  // What the curve adds to the signed area of a boundary: half the integral of x dy - y dx. Exact but for rounding
  // when there are no weights. With weights it is refined until two steps agree to twelve digits; nothing when they
  // do not come to agree.
  [[nodiscard]] std::optional<double> boundaryIntegral() const;

 private:
  struct Evaluated {
    Vector2 point;
    Vector2 derivative;
  };

  Spline(int degree, std::vector<double> knots, std::vector<Vector2> points, std::vector<double> weights)
      : degree_(static_cast<std::size_t>(degree)),
        knots_(std::move(knots)),
        points_(std::move(points)),
        weights_(std::move(weights)) {}

  [[nodiscard]] Evaluated evaluate(double parameter) const;
  [[nodiscard]] double integralBetween(double from, double to) const;

  std::size_t degree_;
  std::vector<double> knots_;
  std::vector<Vector2> points_;
  // Empty: all the same.
  std::vector<double> weights_;
};

}  // namespace velt::automation
