#include "embedded/automation/geometry/Boundary.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <utility>

#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/Box.h"
#include "embedded/automation/geometry/BoxTree.h"
#include "embedded/automation/geometry/Effort.h"

namespace velt::automation {
namespace {

using Polygon = std::vector<Vector2>;

// A loop whose edges run head to tail.
struct Chained {
  // And whether the edge is run through backwards.
  std::vector<std::pair<BoundaryEdge, bool>> edges;
};

Vector2 firstOf(const BoundaryEdge& edge) {
  if (const auto* line = std::get_if<LineEdge>(&edge)) return line->from;
  if (const auto* arc = std::get_if<EllipticalArc>(&edge)) return arc->first();
  return std::get<Spline>(edge).first();
}

Vector2 lastOf(const BoundaryEdge& edge) {
  if (const auto* line = std::get_if<LineEdge>(&edge)) return line->to;
  if (const auto* arc = std::get_if<EllipticalArc>(&edge)) return arc->last();
  return std::get<Spline>(edge).last();
}

double integralOf(const BoundaryEdge& edge, Vector2 origin, Effort& effort) {
  const Vector2 offset = Vector2{} - origin;
  if (const auto* line = std::get_if<LineEdge>(&edge))
    return cross(line->from - origin, line->to - origin) / 2;
  if (const auto* arc = std::get_if<EllipticalArc>(&edge)) return arc->movedBy(offset).boundaryIntegral();
  const std::optional<double> integral = std::get<Spline>(edge).movedBy(offset).boundaryIntegral(effort);
  if (!integral) throw BoundaryError("a spline of the boundary is too uneven to be integrated");
  return *integral;
}

// Points along the edge without its last one; enough of them to tell what lies inside what.
void flatten(const BoundaryEdge& edge, bool backwards, Polygon& polygon) {
  Polygon points;
  if (const auto* line = std::get_if<LineEdge>(&edge)) {
    points = {line->from, line->to};
  } else if (const auto* arc = std::get_if<EllipticalArc>(&edge)) {
    const int steps = std::max(2, static_cast<int>(std::ceil(std::abs(arc->sweep) / fullTurn * 128)));
    for (int step = 0; step <= steps; ++step)
      points.push_back(arc->at(arc->start + arc->sweep * step / steps));
  } else {
    const auto& spline = std::get<Spline>(edge);
    constexpr int steps = 16;
    for (const auto& [from, to] : spline.spans()) {
      for (int step = 0; step < steps; ++step)
        points.push_back(spline.at(from + (to - from) * step / steps));
    }
    points.push_back(spline.last());
  }
  if (backwards) std::reverse(points.begin(), points.end());
  polygon.insert(polygon.end(), points.begin(), points.end() - 1);
}

// Writers round coordinates, so edges that meet may miss each other by a little.
constexpr double gapAllowed = 1e-5;

Box extentOf(const std::vector<BoundaryEdge>& edges) {
  Box box;
  Polygon points;
  for (const BoundaryEdge& edge : edges)
    flatten(edge, false, points);
  for (const Vector2 point : points)
    box.include(point);
  return box;
}

std::optional<Chained> chainFrom(const std::vector<BoundaryEdge>& edges, bool firstBackwards, double gap) {
  Chained chain;
  const Vector2 begin = firstBackwards ? lastOf(edges.front()) : firstOf(edges.front());
  Vector2 end = firstBackwards ? firstOf(edges.front()) : lastOf(edges.front());
  chain.edges.emplace_back(edges.front(), firstBackwards);
  for (std::size_t i = 1; i < edges.size(); ++i) {
    const Vector2 first = firstOf(edges[i]);
    const Vector2 last = lastOf(edges[i]);
    const bool backwards = length(last - end) < length(first - end);
    if (length((backwards ? last : first) - end) > gap) return std::nullopt;
    chain.edges.emplace_back(edges[i], backwards);
    end = backwards ? first : last;
  }
  if (length(end - begin) > gap) return std::nullopt;
  return chain;
}

Chained chained(const std::vector<BoundaryEdge>& edges) {
  const double gap = gapAllowed * extentOf(edges).size();
  for (const bool backwards : {false, true}) {
    if (std::optional<Chained> chain = chainFrom(edges, backwards, gap)) return *std::move(chain);
  }
  throw BoundaryError("the edges of the boundary do not form closed loops");
}

struct Measured {
  // Counterclockwise positive.
  double area = 0;
  Polygon polygon;
};

Measured measured(const std::vector<BulgeVertex>& path, Effort&) {
  Measured loop{signedPathArea(path, true), {}};
  for (std::size_t i = 0; i < path.size(); ++i) {
    const Vector2 from = path[i].point;
    const Vector2 to = path[(i + 1) % path.size()].point;
    if (from == to) continue;
    // A bulge that cannot be seen would give an arc with an endless radius.
    if (std::abs(path[i].bulge) < 1e-6) {
      loop.polygon.push_back(from);
    } else {
      flatten(EllipticalArc::ofBulge(from, to, path[i].bulge), false, loop.polygon);
    }
  }
  return loop;
}

Measured measured(const std::vector<BoundaryEdge>& edges, Effort& effort) {
  Measured loop;
  if (edges.empty()) return loop;
  const Vector2 origin = firstOf(edges.front());
  Vector2 end = origin;
  for (const auto& [edge, backwards] : chained(edges).edges) {
    const Vector2 from = backwards ? lastOf(edge) : firstOf(edge);
    const Vector2 to = backwards ? firstOf(edge) : lastOf(edge);
    // The remaining gap is bridged by a straight line, and so is the one back to the start, which adds nothing.
    if (!loop.polygon.empty()) loop.area += cross(end - origin, from - origin) / 2;
    loop.area += (backwards ? -1 : 1) * integralOf(edge, origin, effort);
    flatten(edge, backwards, loop.polygon);
    end = to;
  }
  return loop;
}

struct Segment {
  Vector2 from;
  Vector2 to;
  [[nodiscard]] Box box() const {
    Box box;
    box.include(from);
    box.include(to);
    return box;
  }
};

// Each end of either segment lies clearly on its own side of the other one; touching does not count.
bool crosses(const Segment& a, const Segment& b) {
  const auto apart = [](const Segment& line, const Segment& other) {
    const Vector2 along = line.to - line.from;
    const double first = cross(along, other.from - line.from);
    const double second = cross(along, other.to - line.from);
    if (!((first > 0 && second < 0) || (first < 0 && second > 0))) return false;
    const double tolerance = 1e-6 * length(along) * (length(along) + length(other.to - other.from));
    return std::abs(first) > tolerance && std::abs(second) > tolerance;
  };
  return apart(a, b) && apart(b, a);
}

std::vector<Segment> sidesOf(const Polygon& polygon) {
  std::vector<Segment> sides;
  sides.reserve(polygon.size());
  for (std::size_t i = 0; i < polygon.size(); ++i)
    sides.push_back({polygon[i], polygon[(i + 1) % polygon.size()]});
  return sides;
}

std::vector<Box> boxesOf(const std::vector<Segment>& segments) {
  std::vector<Box> boxes;
  boxes.reserve(segments.size());
  for (const Segment& segment : segments)
    boxes.push_back(segment.box());
  return boxes;
}

bool anyCrossing(const std::vector<Measured>& loops, Effort& effort) {
  std::vector<Segment> segments;
  for (const Measured& loop : loops) {
    const std::vector<Segment> sides = sidesOf(loop.polygon);
    segments.insert(segments.end(), sides.begin(), sides.end());
  }
  const std::vector<Box> boxes = boxesOf(segments);
  const BoxTree tree(boxes);
  for (std::size_t i = 0; i < segments.size(); ++i) {
    const bool isFree = tree.visitMeeting(boxes[i], [&](std::size_t other) {
      effort.spend();
      return other >= i || !crosses(segments[other], segments[i]);
    });
    if (!isFree) return true;
  }
  return false;
}

// A polygon that many points are looked for in.
class Region {
 public:
  Region(const Polygon& polygon, Effort& effort) : sides_(sidesOf(polygon)), effort_(effort) {}

  [[nodiscard]] bool contains(Vector2 point) {
    bool inside = false;
    forEachSideAt(point.y, [&](const Segment& side) {
      const auto& [a, b] = side;
      if ((a.y > point.y) != (b.y > point.y) && point.x < (a.x - b.x) * (point.y - b.y) / (a.y - b.y) + b.x) {
        inside = !inside;
      }
    });
    return inside;
  }

 private:
  template <class Visit>
  void forEachSideAt(double height, Visit&& visit) {
    // So few are looked through faster than they are found.
    constexpr std::size_t few = 64;
    if (sides_.size() <= few) {
      for (const Segment& side : sides_) {
        effort_.spend();
        visit(side);
      }
      return;
    }
    if (tree_ == nullptr) tree_ = std::make_unique<BoxTree>(boxesOf(sides_));
    constexpr double everywhere = std::numeric_limits<double>::max();
    tree_->visitMeeting({{-everywhere, height}, {everywhere, height}}, [&](std::size_t side) {
      effort_.spend();
      visit(sides_[side]);
      return true;
    });
  }

  std::vector<Segment> sides_;
  Effort& effort_;
  // Made for the first point.
  std::unique_ptr<BoxTree> tree_;
};

// A point well within the polygon: in the widest place of a level on which no corner lies.
Vector2 pointWithin(const Polygon& polygon) {
  std::vector<double> levels;
  for (const Vector2 point : polygon)
    levels.push_back(point.y);
  std::sort(levels.begin(), levels.end());
  double level = levels.front();
  double tallest = 0;
  for (std::size_t i = 1; i < levels.size(); ++i) {
    if (levels[i] - levels[i - 1] > tallest) {
      tallest = levels[i] - levels[i - 1];
      level = (levels[i] + levels[i - 1]) / 2;
    }
  }
  std::vector<double> hits;
  for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
    const Vector2 a = polygon[i];
    const Vector2 b = polygon[j];
    if ((a.y > level) != (b.y > level)) hits.push_back((b.x - a.x) * (level - a.y) / (b.y - a.y) + a.x);
  }
  std::sort(hits.begin(), hits.end());
  double x = polygon.front().x;
  double widest = -1;
  for (std::size_t i = 0; i + 1 < hits.size(); i += 2) {
    if (hits[i + 1] - hits[i] > widest) {
      widest = hits[i + 1] - hits[i];
      x = (hits[i] + hits[i + 1]) / 2;
    }
  }
  return {x, level};
}

// How many of the others each loop lies in.
std::vector<int> depthsOf(const std::vector<Measured>& loops, Effort& effort) {
  std::vector<Box> boxes;
  std::vector<Region> regions;
  double farthest = 0;
  for (const Measured& loop : loops) {
    Box box;
    for (const Vector2 point : loop.polygon)
      box.include(point);
    boxes.push_back(box);
    regions.emplace_back(loop.polygon, effort);
    for (const double end : {box.low.x, box.low.y, box.high.x, box.high.y})
      farthest = std::max(farthest, std::abs(end));
  }
  const BoxTree tree(boxes);
  // Rounding may find a point inside that lies this far outside.
  const double slack = 1e-12 * farthest;

  std::vector<int> depths(loops.size(), 0);
  for (std::size_t i = 0; i < loops.size(); ++i) {
    const Vector2 point = pointWithin(loops[i].polygon);
    const double own = std::abs(loops[i].area);
    const Box around{point - Vector2{slack, slack}, point + Vector2{slack, slack}};
    tree.visitMeeting(around, [&](std::size_t other) {
      effort.spend();
      const double area = std::abs(loops[other].area);
      // Of two loops that coincide the later one is the inner one.
      const bool mayHold = area > own || (!(area < own) && other < i);
      if (mayHold && regions[other].contains(point)) ++depths[i];
      return true;
    });
  }
  return depths;
}

void requireFinite(const Measured& loop) {
  const auto isFinite = [](Vector2 point) { return std::isfinite(point.x) && std::isfinite(point.y); };
  if (!std::isfinite(loop.area) || !std::all_of(loop.polygon.begin(), loop.polygon.end(), isFinite))
    throw BoundaryError("the boundary reaches too far");
}

std::size_t partsOf(std::span<const BoundaryLoop> loops) {
  std::size_t parts = 0;
  for (const BoundaryLoop& loop : loops) {
    if (const auto* path = std::get_if<std::vector<BulgeVertex>>(&loop)) parts += path->size();
    if (const auto* edges = std::get_if<std::vector<BoundaryEdge>>(&loop)) {
      for (const BoundaryEdge& edge : *edges) {
        const auto* const spline = std::get_if<Spline>(&edge);
        parts += spline != nullptr ? spline->pointCount() : 1;
      }
    }
  }
  return parts;
}

}  // namespace

double boundedArea(std::span<const BoundaryLoop> loops, IslandStyle style) {
  Effort effort(partsOf(loops));
  std::vector<Measured> all;
  for (const BoundaryLoop& loop : loops) {
    Measured one = std::visit([&](const auto& shape) { return measured(shape, effort); }, loop);
    if (one.polygon.size() <= 2) continue;
    requireFinite(one);
    all.push_back(std::move(one));
  }
  if (anyCrossing(all, effort)) throw BoundaryError("loops of the boundary cross");
  const std::vector<int> depths = depthsOf(all, effort);
  double total = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const int depth = depths[i];
    if (depth > (style == IslandStyle::Ignore ? 0 : 1) && style != IslandStyle::Normal) continue;
    total += (depth % 2 == 0 ? 1 : -1) * std::abs(all[i].area);
  }
  if (!std::isfinite(total)) throw BoundaryError("the boundary reaches too far");
  return total;
}

}  // namespace velt::automation
