#include "view/HatchLines.h"

#include <algorithm>
#include <cmath>

#include "embedded/automation/geometry/Box.h"

namespace velt::view {
namespace {

// Where the lines of a family are level: `along` runs with them, `across` counts them.
struct Level {
  Vector2 base;
  Vector2 direction;
  double spacing;
  // How far each line is shifted along itself against the one before.
  double shift;

  [[nodiscard]] double along(Vector2 point) const { return dot(point - base, direction); }
  [[nodiscard]] double across(Vector2 point) const { return cross(direction, point - base) / spacing; }
  [[nodiscard]] Vector2 at(double along, double line) const {
    return base + along * direction + (line * spacing) * perpendicular(direction);
  }
};

struct Crossing {
  double line;
  double along;
};

// Cuts a piece of a line into its dashes.
class Dashes {
 public:
  Dashes(const std::vector<double>& lengths, double shortest) {
    for (const double length : lengths)
      period_ += std::abs(length);
    const bool isSeen = !lengths.empty() && std::isfinite(period_) && period_ > 0
                        && period_ / static_cast<double>(lengths.size()) >= shortest;
    if (isSeen) lengths_ = &lengths;
  }

  // Calls `visit(from, to)` for each dash; false when there are more than `most`.
  template <class Visit>
  bool cut(double from, double to, double phase, std::size_t most, Visit&& visit) const {
    if (lengths_ == nullptr) {
      visit(from, to);
      return true;
    }
    if ((to - from) / period_ * static_cast<double>(lengths_->size()) > static_cast<double>(most))
      return false;
    double start = phase + std::floor((from - phase) / period_) * period_;
    while (start < to) {
      for (const double length : *lengths_) {
        const double end = start + std::abs(length);
        if (length >= 0 && end >= from && start <= to) visit(std::max(start, from), std::min(end, to));
        start = end;
      }
    }
    return true;
  }

 private:
  const std::vector<double>* lengths_ = nullptr;
  double period_ = 0;
};

}  // namespace

double spacingOf(const LineFamily& family) {
  const Vector2 direction{std::cos(family.angle), std::sin(family.angle)};
  return std::abs(cross(direction, family.offset));
}

bool appendHatchLines(std::vector<Outline>& lines, const LineFamily& family,
                      std::span<const std::vector<Vector2>> loops, double shortest, std::size_t most) {
  const Vector2 direction{std::cos(family.angle), std::sin(family.angle)};
  const Level level{family.base, direction, cross(direction, family.offset), dot(direction, family.offset)};
  if (!(std::abs(level.spacing) > 0) || !std::isfinite(level.spacing)) return true;

  // Where each line crosses an edge of the area.
  std::vector<Crossing> crossings;
  for (const std::vector<Vector2>& loop : loops) {
    for (std::size_t i = 0; i < loop.size(); ++i) {
      const Vector2 from = loop[i];
      const Vector2 to = loop[(i + 1) % loop.size()];
      const double start = level.across(from);
      const double end = level.across(to);
      if (!std::isfinite(start) || !std::isfinite(end)) continue;
      // A line through a corner crosses one of its two edges: that which comes from below.
      const double first = std::ceil(std::min(start, end));
      const double last = std::ceil(std::max(start, end)) - 1;
      if (last - first + static_cast<double>(crossings.size()) > static_cast<double>(most)) return false;
      for (double line = first; line <= last; ++line) {
        const double part = (line - start) / (end - start);
        crossings.push_back({line, level.along(from + part * (to - from))});
      }
    }
  }
  std::sort(crossings.begin(), crossings.end(), [](const Crossing& a, const Crossing& b) {
    return a.line < b.line || (!(b.line < a.line) && a.along < b.along);
  });

  const Dashes dashes(family.dashes, shortest);
  std::vector<Outline> pieces;
  for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
    const Crossing& enter = crossings[i];
    const Crossing& leave = crossings[i + 1];
    // Rounding has lost a crossing: the next pair begins with this one.
    if (enter.line < leave.line) {
      --i;
      continue;
    }
    const bool fits =
        dashes.cut(enter.along, leave.along, enter.line * level.shift, most, [&](double from, double to) {
          pieces.push_back({{level.at(from, enter.line), level.at(to, enter.line)}});
        });
    if (!fits || pieces.size() > most) return false;
  }
  lines.insert(lines.end(), std::make_move_iterator(pieces.begin()), std::make_move_iterator(pieces.end()));
  return true;
}

}  // namespace velt::view
