#include "view/LinePieces.h"

#include <algorithm>
#include <cmath>

namespace velt::view {

std::optional<std::pair<double, double>> partWithin(Vector2 from, Vector2 to, const Box& box) {
  double first = 0;
  double last = 1;
  const auto cut = [&](double start, double end, double low, double high) {
    const double step = end - start;
    if (!(std::abs(step) > 0)) return start >= low && start <= high;
    const double a = (low - start) / step;
    const double b = (high - start) / step;
    first = std::max(first, std::min(a, b));
    last = std::min(last, std::max(a, b));
    return first <= last;
  };
  const bool isSeen = cut(from.x, to.x, box.low.x, box.high.x) && cut(from.y, to.y, box.low.y, box.high.y);
  return isSeen ? std::optional(std::pair(first, last)) : std::nullopt;
}

std::vector<LinePiece> piecesWithin(std::span<const Vector2> points, bool isClosed, const Box& box) {
  std::vector<LinePiece> pieces;
  double before = 0;
  bool goesOn = false;
  const auto segment = [&](Vector2 from, Vector2 to) {
    const double size = length(to - from);
    const auto part = std::isfinite(size) ? partWithin(from, to, box) : std::nullopt;
    if (part) {
      const auto [first, last] = *part;
      if (!goesOn || first > 0) {
        pieces.push_back({.start = before + first * size});
        pieces.back().points.push_back(first > 0 ? from + first * (to - from) : from);
      }
      pieces.back().points.push_back(last < 1 ? from + last * (to - from) : to);
    }
    goesOn = part && !(part->second < 1);
    if (std::isfinite(size)) before += size;
  };
  for (std::size_t i = 1; i < points.size(); ++i)
    segment(points[i - 1], points[i]);
  if (isClosed && points.size() > 2) segment(points.back(), points.front());
  return pieces;
}

}  // namespace velt::view
