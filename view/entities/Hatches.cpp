#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <variant>

#include "dxf/Numbers.h"
#include "embedded/automation/boundaries/HatchBoundary.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "view/Colors.h"
#include "view/HatchLines.h"
#include "view/entities/Entities.h"

namespace velt::view::entities {
namespace {

using automation::BoundaryEdge;
using automation::BoundaryLoop;
using automation::EllipseEnds;
using automation::LineEdge;

constexpr std::string_view hatchSubclass = "AcDbHatch";

using Loop = std::vector<Vector2>;

Loop pointsOf(const BoundaryEdge& edge, Tolerance tolerance) {
  Loop points;
  if (const auto* line = std::get_if<LineEdge>(&edge)) {
    points = {line->from, line->to};
  } else if (const auto* arc = std::get_if<automation::EllipticalArc>(&edge)) {
    points = {arc->first()};
    appendArc(points, *arc, tolerance);
  } else {
    appendSpline(points, std::get<automation::Spline>(edge), tolerance);
  }
  return points;
}

struct FlatLoop {
  Loop points{};
  // Between edges that should meet.
  double gaps = 0;
};

FlatLoop flattened(const std::vector<BoundaryEdge>& edges, Tolerance tolerance) {
  FlatLoop loop;
  for (std::size_t i = 0; i < edges.size(); ++i) {
    Loop points = pointsOf(edges[i], tolerance);
    if (points.empty()) continue;
    const auto gapTo = [&](Vector2 point) { return length(point - loop.points.back()); };
    if (!loop.points.empty()) {
      // The first edge tells its direction only once the second one is known.
      if (i == 1
          && std::min(gapTo(points.front()), gapTo(points.back())) > std::min(
                 length(points.front() - loop.points.front()), length(points.back() - loop.points.front())))
        std::reverse(loop.points.begin(), loop.points.end());
      if (gapTo(points.back()) < gapTo(points.front())) std::reverse(points.begin(), points.end());
      loop.gaps += gapTo(points.front());
    }
    loop.points.insert(loop.points.end(), points.begin(), points.end());
  }
  if (!loop.points.empty()) loop.gaps += length(loop.points.front() - loop.points.back());
  return loop;
}

FlatLoop flattened(const BoundaryLoop& loop, Tolerance tolerance) {
  if (const auto* edges = std::get_if<std::vector<BoundaryEdge>>(&loop)) return flattened(*edges, tolerance);
  const auto& path = std::get<std::vector<automation::BulgeVertex>>(loop);
  FlatLoop flat;
  for (std::size_t i = 0; i < path.size(); ++i)
    appendBulge(flat.points, path[i].point, path[(i + 1) % path.size()].point, path[i].bulge, tolerance);
  return flat;
}

struct FlatBoundary {
  std::vector<Loop> loops{};
  double gaps = 0;
};

FlatBoundary flattened(const Lens& hatch, EllipseEnds ends, Tolerance tolerance) {
  FlatBoundary boundary;
  for (const BoundaryLoop& loop : automation::hatchLoops(hatch, ends)) {
    FlatLoop flat = flattened(loop, tolerance);
    boundary.gaps += flat.gaps;
    if (flat.points.size() > 2) boundary.loops.push_back(std::move(flat.points));
  }
  return boundary;
}

bool contains(const Loop& loop, Vector2 point) {
  bool isInside = false;
  for (std::size_t i = 0; i < loop.size(); ++i) {
    const Vector2 a = loop[i];
    const Vector2 b = loop[(i + 1) % loop.size()];
    if ((a.y > point.y) != (b.y > point.y) && point.x < a.x + (point.y - a.y) / (b.y - a.y) * (b.x - a.x))
      isInside = !isInside;
  }
  return isInside;
}

// The loops that bound what is filled: of nested ones all, the outer two, or the outermost.
std::vector<Loop> filledLoops(std::vector<Loop> loops, std::int64_t islands) {
  constexpr std::int64_t outer = 1;
  constexpr std::int64_t ignore = 2;
  // Among more, the search for the outer ones would take too long; then every second ring is filled.
  constexpr std::size_t mostLoops = 2000;
  if ((islands != outer && islands != ignore) || loops.size() > mostLoops) return loops;
  std::vector<Loop> kept;
  const std::size_t deepest = islands == outer ? 1 : 0;
  for (const Loop& loop : loops) {
    // The middle of an edge, since corners of neighbors touch.
    const Vector2 probe = 0.5 * (loop[0] + loop[1]);
    const auto depth =
        static_cast<std::size_t>(std::count_if(loops.begin(), loops.end(), [&](const Loop& other) {
          return &other != &loop && contains(other, probe);
        }));
    if (depth <= deepest) kept.push_back(loop);
  }
  return kept;
}

std::vector<LineFamily> familiesOf(const Lens& hatch) {
  std::vector<LineFamily> families;
  const dxf::RecordView& view = hatch.view();
  // After the boundary, in which some of the codes mean other things.
  bool isPattern = false;
  view.visit(hatchSubclass, [&](std::size_t index) {
    const int code = view.code(index);
    if (code == 78) isPattern = true;
    if (!isPattern || code < 43 || code > 53) return true;
    const double number = dxf::parseReal(view.value(index)).value_or(0);
    if (code == 53) families.push_back({.angle = automation::radians(number)});
    if (families.empty()) return true;
    LineFamily& family = families.back();
    if (code == 43) family.base.x = number;
    if (code == 44) family.base.y = number;
    if (code == 45) family.offset.x = number;
    if (code == 46) family.offset.y = number;
    if (code == 49) family.dashes.push_back(number);
    return true;
  });
  return families;
}

// Both colors of a gradient; of one alone, itself.
Ink gradientInk(const Painter& painter, const Lens& hatch, const Place& place) {
  std::vector<Ink> inks;
  const dxf::RecordView& view = hatch.view();
  bool isGradient = false;
  view.visit(hatchSubclass, [&](std::size_t index) {
    const int code = view.code(index);
    if (code == 450) isGradient = true;
    if (!isGradient) return true;
    const auto number = dxf::parseInteger<std::int64_t>(view.value(index));
    if (code == 463) inks.push_back(place.look.ink);
    if (inks.empty() || !number) return true;
    if (code == 63) inks.back() = painter.appearance().inkOf(*number, place.look);
    if (code == 421) inks.back() = inkOfRgb(static_cast<std::uint32_t>(*number));
    return true;
  });
  if (inks.empty()) return place.look.ink;
  return inks.size() == 1 ? inks.front() : mixed(inks[0], inks[1]);
}

class HatchDrawer {
 public:
  HatchDrawer(Painter& painter, const Lens& hatch, const Place& place)
      : painter_(painter), hatch_(hatch), place_(place) {
    const double elevation = hatch.real(30, hatchSubclass, 0);
    plane_ = place.toSpace()
                 .after(Transform::ofFrame(automation::frameOf(hatch, hatchSubclass)))
                 .after(Transform::moved({0, 0, elevation}));
  }

  void draw(const std::vector<Loop>& loops) {
    Pen pen = painter_.pen(place_);
    const bool isSolid = hatch_.integer(70, hatchSubclass, 0) == 1;
    if (hatch_.integer(450, hatchSubclass, 0) == 1) {
      pen.ink = gradientInk(painter_, hatch_, place_);
      fill(pen, loops);
    } else if (isSolid) {
      fill(pen, loops);
    } else {
      drawPattern(pen, loops);
    }
  }

 private:
  [[nodiscard]] std::vector<Outline> seen(const std::vector<Loop>& loops) const {
    std::vector<Outline> outlines;
    for (const Loop& loop : loops) {
      outlines.push_back({{}, true});
      for (const Vector2& point : loop)
        outlines.back().points.push_back(plane_.flat({point.x, point.y, 0}));
    }
    return outlines;
  }

  void fill(const Pen& pen, const std::vector<Loop>& loops) { painter_.canvas().fill(pen, seen(loops)); }

  void drawPattern(Pen pen, const std::vector<Loop>& loops) {
    // In pixels: lines that are nearer to each other, and dashes that are shorter, run into each other.
    constexpr double nearest = 1.5;
    constexpr double shortest = 1;
    constexpr std::size_t mostPieces = 200'000;
    const double pixel = plane_.scale() * painter_.canvas().pixels(1);
    const std::vector<LineFamily> families = familiesOf(hatch_);
    std::vector<Outline> lines;
    // Without a scale nobody sees the lines, only where they are.
    bool isDense = !(pixel > 0);
    for (const LineFamily& family : families) {
      if (isDense) break;
      isDense = spacingOf(family) > 0 && spacingOf(family) * pixel < nearest;
      if (!isDense) isDense = !appendHatchLines(lines, family, loops, shortest / pixel, mostPieces);
    }
    if (isDense) {
      constexpr float asSeen = 0.4F;
      pen.opacity *= asSeen;
      fill(pen, loops);
      return;
    }
    for (Outline& line : lines) {
      for (Vector2& point : line.points)
        point = plane_.flat({point.x, point.y, 0});
    }
    painter_.canvas().path(pen, lines);
  }

  Painter& painter_;
  const Lens& hatch_;
  const Place& place_;
  Transform plane_{};
};

}  // namespace

void drawHatch(Painter& painter, const Lens& entity, const Place& place) {
  const double scale = place.toSpace().scale();
  const Tolerance tolerance{scale > 0 ? painter.canvas().tolerance().value / scale : 0};
  FlatBoundary boundary;
  try {
    boundary = flattened(entity, EllipseEnds::Angles, tolerance);
    // Of the two ways to read the ends of an elliptic edge, the one by which the edges meet was meant.
    if (boundary.gaps > 0) {
      FlatBoundary other = flattened(entity, EllipseEnds::Parameters, tolerance);
      if (other.gaps < boundary.gaps) boundary = std::move(other);
    }
  } catch (const automation::BoundaryError&) {
    return;  // nobody knows what it fills
  }
  HatchDrawer(painter, entity, place)
      .draw(filledLoops(std::move(boundary.loops), entity.integer(75, hatchSubclass, 0)));
}

}  // namespace velt::view::entities
