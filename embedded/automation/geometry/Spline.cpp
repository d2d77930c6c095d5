#include "embedded/automation/geometry/Spline.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velt::automation {
namespace {

constexpr int highestDegree = 15;

// Gauss and Legendre's rule with 16 points, symmetric about the middle: exact for polynomials up to degree 31, which
// x dy - y dx of a curve of the highest degree does not exceed.
struct GaussPoint {
  double position;
  double weight;
};
constexpr std::array<GaussPoint, 8> gaussPoints = {{
    {0.0950125098376374401853193354249581, 0.1894506104550684962853967232082831},
    {0.2816035507792589132304605014604961, 0.1826034150449235888667636679692199},
    {0.4580167776572273863424194429835775, 0.1691565193950025381893120790303600},
    {0.6178762444026437484466717640487910, 0.1495959888165767320815017305474786},
    {0.7554044083550030338951011948474422, 0.1246289712555338720524762821920164},
    {0.8656312023878317438804678977123931, 0.0951585116824927848099251076022462},
    {0.9445750230732325760779884155346083, 0.0622535239386478928628438369943776},
    {0.9894009349916499325961541734503326, 0.0271524594117540948517805724560181},
}};

}  // namespace

std::optional<Spline> Spline::make(std::int64_t degree, std::vector<double> knots,
                                   std::vector<Vector2> points, std::vector<double> weights) {
  if (degree < 1 || degree > highestDegree) return std::nullopt;
  const auto order = static_cast<std::size_t>(degree) + 1;
  if (points.size() < order || knots.size() != points.size() + order) return std::nullopt;
  if (!std::is_sorted(knots.begin(), knots.end())) return std::nullopt;
  if (!(knots[points.size()] > knots[order - 1])) return std::nullopt;
  if (!weights.empty() && weights.size() != points.size()) return std::nullopt;
  if (!std::all_of(weights.begin(), weights.end(), [](double weight) { return weight > 0; }))
    return std::nullopt;
  return Spline(order - 1, std::move(knots), std::move(points), std::move(weights));
}

std::vector<std::pair<double, double>> Spline::spans() const {
  std::vector<std::pair<double, double>> found;
  for (std::size_t i = degree_; i < points_.size(); ++i) {
    if (knots_[i] < knots_[i + 1]) found.emplace_back(knots_[i], knots_[i + 1]);
  }
  return found;
}

Spline Spline::movedBy(Vector2 offset) const {
  Spline moved = *this;
  for (Vector2& point : moved.points_)
    point = point + offset;
  return moved;
}

Spline Spline::fromZero() const {
  Spline moved = *this;
  for (double& knot : moved.knots_)
    knot -= firstParameter();
  return moved;
}

double Spline::polygonLength() const {
  double total = 0;
  for (std::size_t i = 1; i < points_.size(); ++i)
    total += length(points_[i] - points_[i - 1]);
  return total;
}

Spline::Evaluated Spline::evaluate(double parameter) const {
  const auto firstKnot = knots_.begin() + static_cast<std::ptrdiff_t>(degree_);
  const auto lastKnot = knots_.begin() + static_cast<std::ptrdiff_t>(points_.size());
  const auto above = std::upper_bound(firstKnot, lastKnot, parameter);
  // At the very end of the parameters the last span that has a length answers, not an empty one after it.
  auto span = static_cast<std::size_t>(above - knots_.begin()) - 1;
  while (span > degree_ && !(knots_[span] < knots_[span + 1]))
    --span;

  // The basis functions of this degree and, one step before it, of the degree below, which the derivatives need.
  std::array<double, highestDegree + 1> basis{};
  std::array<double, highestDegree + 1> lower{};
  basis[0] = 1;
  for (std::size_t degree = 1; degree <= degree_; ++degree) {
    lower = basis;
    double carried = 0;
    for (std::size_t r = 0; r < degree; ++r) {
      const double right = knots_[span + r + 1] - parameter;
      const double left = parameter - knots_[span + 1 + r - degree];
      const double share = lower[r] / (right + left);
      basis[r] = carried + right * share;
      carried = left * share;
    }
    basis[degree] = carried;
  }

  Vector2 point;
  Vector2 derivative;
  double weight = 0;
  double weightDerivative = 0;
  for (std::size_t r = 0; r <= degree_; ++r) {
    const std::size_t index = span - degree_ + r;
    double slope = 0;
    if (r > 0) slope += lower[r - 1] / (knots_[index + degree_] - knots_[index]);
    if (r < degree_) slope -= lower[r] / (knots_[index + degree_ + 1] - knots_[index + 1]);
    slope *= static_cast<double>(degree_);
    const double own = weights_.empty() ? 1 : weights_[index];
    point = point + basis[r] * own * points_[index];
    derivative = derivative + slope * own * points_[index];
    weight += basis[r] * own;
    weightDerivative += slope * own;
  }
  if (weights_.empty()) return {point, derivative};
  const Vector2 projected = (1 / weight) * point;
  return {projected, (1 / weight) * (derivative - weightDerivative * projected)};
}

double Spline::integralBetween(double from, double to) const {
  const double middle = (from + to) / 2;
  const double half = (to - from) / 2;
  double total = 0;
  for (const GaussPoint& gauss : gaussPoints) {
    for (const double side : {-1.0, 1.0}) {
      const Evaluated at = evaluate(middle + side * half * gauss.position);
      total += gauss.weight * cross(at.point, at.derivative);
    }
  }
  return total * half / 2;
}

std::optional<double> Spline::boundaryIntegral(Effort& effort) const {
  constexpr std::size_t stepsForPiece = Spline::stepsForPoint * 2 * gaussPoints.size();
  double total = 0;
  for (const auto& [from, to] : spans()) {
    effort.spend(stepsForPiece);
    double whole = integralBetween(from, to);
    if (weights_.empty()) {
      total += whole;
      continue;
    }
    constexpr int mostParts = 256;
    bool settled = false;
    for (int parts = 2; parts <= mostParts && !settled; parts *= 2) {
      double refined = 0;
      double size = 0;
      for (int part = 0; part < parts; ++part) {
        effort.spend(stepsForPiece);
        const double step = (to - from) / parts;
        const double piece = integralBetween(from + part * step, from + (part + 1) * step);
        refined += piece;
        size += std::abs(piece);
      }
      settled = std::abs(refined - whole) <= 1e-12 * size;
      whole = refined;
    }
    if (!settled) return std::nullopt;
    total += whole;
  }
  return total;
}

}  // namespace velt::automation
