#include "embedded/automation/boundaries/FollowingHatch.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numeric>
#include <string>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/Box.h"
#include "embedded/automation/geometry/Effort.h"
#include "embedded/automation/geometry/EntityGeometry.h"

namespace velt::automation {
namespace {

constexpr int lineKind = 1;
constexpr int arcKind = 2;
// In radians: angles are stored as degrees, and rounded.
constexpr double wholeTurnSlack = 1e-6;

// --- which pieces of the boundary are which pieces of the entity ---

// Of an entity of that size, two places that are this near are the same: writers of drawings round.
double toleranceFor(const SourceOutline& outline) {
  constexpr double ofSize = 1e-6;
  constexpr double ofPlace = 1e-12;
  Box box;
  for (const OutlineSegment& segment : outline.segments) {
    for (const Vector2 point : {segment.from, segment.middle(), segment.to})
      box.include(point);
  }
  if (outline.whole) {
    const double radius = length(outline.whole->major);
    box.include(Box{outline.whole->center, outline.whole->center}.grown(radius));
  }
  return ofSize * box.size() + ofPlace * (length(box.low) + length(box.high));
}

bool isNear(Vector2 a, Vector2 b, double tolerance) {
  return length(a - b) <= tolerance;
}

bool isCircle(const EllipticalArc& arc) {
  constexpr double slack = 1e-9;
  return std::abs(length(arc.major) - length(arc.minor)) <= slack * length(arc.major);
}

OutlineSegment sideOf(const std::vector<BulgeVertex>& path, std::size_t side) {
  return {path[side].point, path[(side + 1) % path.size()].point, path[side].bulge};
}

// Whether the piece of the boundary is the segment, and whether it runs the other way; nothing when it is another one.
std::optional<bool> runsBackwards(const BoundaryLoop& loop, std::size_t edge, const OutlineSegment& segment,
                                  double tolerance) {
  const auto compared = [&](Vector2 from, Vector2 middle, Vector2 to) -> std::optional<bool> {
    if (!isNear(middle, segment.middle(), tolerance)) return std::nullopt;
    if (isNear(from, segment.from, tolerance) && isNear(to, segment.to, tolerance)) return false;
    if (isNear(from, segment.to, tolerance) && isNear(to, segment.from, tolerance)) return true;
    return std::nullopt;
  };
  if (const auto* path = std::get_if<std::vector<BulgeVertex>>(&loop)) {
    const OutlineSegment side = sideOf(*path, edge);
    return compared(side.from, side.middle(), side.to);
  }
  const BoundaryEdge& stored = std::get<std::vector<BoundaryEdge>>(loop)[edge];
  const bool isStraight = !(segment.bulge < 0 || segment.bulge > 0);
  if (const auto* line = std::get_if<LineEdge>(&stored); line != nullptr && isStraight)
    return compared(line->from, 0.5 * (line->from + line->to), line->to);
  if (const auto* arc = std::get_if<EllipticalArc>(&stored); arc != nullptr && !isStraight && isCircle(*arc))
    return compared(arc->first(), arc->at(arc->start + arc->sweep / 2), arc->last());
  return std::nullopt;
}

// How much of the circle or ellipse the piece is, counterclockwise positive; nothing when it lies elsewhere.
std::optional<double> sweepOn(const EllipticalArc& whole, const BoundaryLoop& loop, std::size_t edge,
                              double tolerance) {
  const double radius = length(whole.major);
  if (const auto* path = std::get_if<std::vector<BulgeVertex>>(&loop)) {
    const OutlineSegment side = sideOf(*path, edge);
    const auto isOnCircle = [&](Vector2 point) {
      return std::abs(length(point - whole.center) - radius) <= tolerance;
    };
    if (!isCircle(whole) || !isOnCircle(side.from) || !isOnCircle(side.middle()) || !isOnCircle(side.to))
      return std::nullopt;
    return 4 * std::atan(side.bulge);
  }
  const auto* arc = std::get_if<EllipticalArc>(&std::get<std::vector<BoundaryEdge>>(loop)[edge]);
  if (arc == nullptr || !isNear(arc->center, whole.center, tolerance)) return std::nullopt;
  const bool isOfCircle =
      isCircle(whole) && isCircle(*arc) && std::abs(length(arc->major) - radius) <= tolerance;
  const bool isAllOfEllipse = isNear(arc->major, whole.major, tolerance)
                              && std::abs(length(arc->minor) - length(whole.minor)) <= tolerance
                              && std::abs(arc->sweep) > fullTurn - wholeTurnSlack;
  return isOfCircle || isAllOfEllipse ? std::optional(arc->sweep) : std::nullopt;
}

std::size_t edgesOf(const HatchPath& path) {
  return path.places.size();
}

bool isMadeFrom(const HatchPath& path, std::uint64_t handle) {
  return std::find(path.sources.begin(), path.sources.end(), handle) != path.sources.end();
}

double areaOf(const std::vector<HatchPath>& paths, IslandStyle style) {
  std::vector<BoundaryLoop> loops;
  for (const HatchPath& path : paths)
    loops.push_back(path.loop);
  return boundedArea(loops, style);
}

// --- writing ---

// The numbers of a hatch. A number that stays what it was stays as it is written.
class Numbers {
 public:
  Numbers(dxf::Document& document, std::uint32_t record) : document_(document), record_(record) {}

  void put(std::size_t pair, int code, double number) {
    const dxf::RecordView view = document_.view(record_);
    if (pair >= view.size() || view.code(pair) != code)
      throw BoundaryError("the boundary of the hatch is stored in another order");
    if (!std::isfinite(number)) throw BoundaryError("the boundary would reach too far");
    if (dxf::parseReal(view.value(pair)) != number) document_.replace(record_, pair, dxf::formatReal(number));
  }
  // x, and y after it.
  void put(std::size_t pair, int code, Vector2 point) {
    put(pair, code, point.x);
    put(pair + 1, code + 10, point.y);
  }
  [[nodiscard]] int code(std::size_t pair) const {
    const dxf::RecordView view = document_.view(record_);
    return pair < view.size() ? view.code(pair) : 0;
  }
  // Of the edge that begins there.
  [[nodiscard]] int kindBefore(std::size_t pair) const {
    return dxf::parseInteger<int>(document_.view(record_).value(pair - 1)).value_or(0);
  }

 private:
  dxf::Document& document_;
  std::uint32_t record_;
};

double storedDirection(double angle) {
  return storedDegreesOf(normalizedAngle(angle));
}

void putArc(Numbers& numbers, std::size_t place, const OutlineSegment& segment) {
  const EllipticalArc arc = EllipticalArc::ofBulge(segment.from, segment.to, segment.bulge);
  const auto directionOf = [&](Vector2 point) {
    const Vector2 arm = point - arc.center;
    const double angle = std::atan2(arm.y, arm.x);
    // The angles of a clockwise one are measured clockwise.
    return storedDirection(arc.sweep > 0 ? angle : -angle);
  };
  numbers.put(place, 10, arc.center);
  numbers.put(place + 2, 40, length(arc.major));
  numbers.put(place + 3, 50, directionOf(segment.from));
  numbers.put(place + 4, 51, directionOf(segment.to));
}

void putEdge(Numbers& numbers, std::size_t place, const OutlineSegment& segment) {
  switch (numbers.kindBefore(place)) {
    case lineKind:
      numbers.put(place, 10, segment.from);
      numbers.put(place + 2, 11, segment.to);
      break;
    case arcKind:
      putArc(numbers, place, segment);
      break;
    default:
      throw BoundaryError("the boundary has an edge of another kind");
  }
}

// Sides that were given another place, and those between them, which stay.
void putSides(Numbers& numbers, const HatchPath& path,
              const std::vector<std::optional<OutlineSegment>>& changed, double tolerance) {
  const auto& vertices = std::get<std::vector<BulgeVertex>>(path.loop);
  const std::size_t count = vertices.size();
  for (std::size_t i = 0; i < count; ++i) {
    const std::optional<OutlineSegment>& before = changed[(i + count - 1) % count];
    const std::optional<OutlineSegment>& after = changed[i];
    if (!before && !after) continue;
    const Vector2 end = before ? before->to : vertices[i].point;
    const Vector2 start = after ? after->from : vertices[i].point;
    if (!isNear(end, start, tolerance))
      throw BoundaryError("the edges of the boundary do not form closed loops");
    numbers.put(path.places[i], 10, after ? start : end);
    if (!after || after->bulge == vertices[i].bulge) continue;
    numbers.put(path.places[i] + 2, 42, after->bulge);
  }
}

// What becomes of the plane when an ellipse becomes another one.
class Stretching {
 public:
  Stretching(const EllipticalArc& before, const EllipticalArc& after) : before_(before), after_(after) {}

  [[nodiscard]] Vector2 ofPlace(Vector2 place) const { return after_.center + ofArm(place - before_.center); }
  [[nodiscard]] Vector2 ofArm(Vector2 arm) const {
    const double along = dot(arm, before_.major) / dot(before_.major, before_.major);
    const double across = dot(arm, before_.minor) / dot(before_.minor, before_.minor);
    return along * after_.major + across * after_.minor;
  }

 private:
  EllipticalArc before_;
  EllipticalArc after_;
};

void putStretched(Numbers& numbers, const HatchPath& path, std::size_t edge, const Stretching& stretching,
                  const EllipticalArc& whole) {
  const std::size_t place = path.places[edge];
  if (const auto* vertices = std::get_if<std::vector<BulgeVertex>>(&path.loop)) {
    if (!isCircle(whole)) throw BoundaryError("the boundary has no edges of an ellipse");
    numbers.put(place, 10, stretching.ofPlace((*vertices)[edge].point));
    return;
  }
  const auto& arc = std::get<EllipticalArc>(std::get<std::vector<BoundaryEdge>>(path.loop)[edge]);
  const Vector2 major = stretching.ofArm(arc.major);
  numbers.put(place, 10, stretching.ofPlace(arc.center));
  if (numbers.kindBefore(place) == arcKind) {
    if (!isCircle(whole)) throw BoundaryError("the boundary has no edges of an ellipse");
    numbers.put(place + 2, 40, length(major));
  } else {
    numbers.put(place + 2, 11, major);
    numbers.put(place + 4, 40, length(whole.minor) / length(whole.major));
  }
}

}  // namespace

std::optional<FollowingHatch> FollowingHatch::of(const database::Drawing& drawing, std::uint32_t hatch,
                                                 std::uint32_t source) {
  const database::Lens lens(drawing, hatch);
  std::optional<SourceOutline> outline = sourceOutline(drawing, source, frameOf(lens, hatchSubclassName));
  if (!outline) return std::nullopt;
  // Of the two ways to read the ends of an elliptic edge, the one by which the edges meet was meant.
  for (const EllipseEnds ends : {EllipseEnds::Angles, EllipseEnds::Parameters}) {
    try {
      const std::vector<HatchPath> paths = hatchPaths(lens, ends);
      [[maybe_unused]] const double area = areaOf(paths, hatchIslandStyle(lens));
      FollowingHatch made(hatch, source, ends, *std::move(outline));
      const std::uint64_t handle = drawing.handleOf(source);
      const bool isLinked =
          made.outline_.whole ? made.linkWhole(paths, handle) : made.linkSegments(paths, handle);
      return isLinked ? std::optional(std::move(made)) : std::nullopt;
    } catch (const BoundaryError&) {
      continue;
    } catch (const NotComputed&) {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

bool FollowingHatch::linkWhole(const std::vector<HatchPath>& paths, std::uint64_t handle) {
  const double tolerance = toleranceFor(outline_);
  for (std::size_t path = 0; path < paths.size(); ++path) {
    if (!isMadeFrom(paths[path], handle)) continue;
    double sum = 0;
    for (std::size_t edge = 0; edge < edgesOf(paths[path]); ++edge) {
      const std::optional<double> sweep = sweepOn(*outline_.whole, paths[path].loop, edge, tolerance);
      if (!sweep) return false;
      sum += *sweep;
    }
    if (std::abs(std::abs(sum) - fullTurn) > wholeTurnSlack) return false;
    wholePaths_.push_back(path);
  }
  return !wholePaths_.empty();
}

bool FollowingHatch::linkSegments(const std::vector<HatchPath>& paths, std::uint64_t handle) {
  const double tolerance = toleranceFor(outline_);
  std::vector<std::vector<bool>> isTaken;
  std::vector<std::size_t> madeFromIt;
  for (std::size_t path = 0; path < paths.size(); ++path) {
    isTaken.emplace_back(edgesOf(paths[path]), false);
    if (isMadeFrom(paths[path], handle)) madeFromIt.push_back(path);
  }

  // Most segments are found beside the last one. Where they are scattered over thousands of edges, nobody waits until each
  // was compared with all.
  Effort effort(outline_.segments.size());
  const auto linkTo = [&](std::size_t segment, std::size_t path, std::size_t edge) {
    effort.spend();
    if (isTaken[path][edge]) return false;
    const auto backwards = runsBackwards(paths[path].loop, edge, outline_.segments[segment], tolerance);
    if (!backwards) return false;
    isTaken[path][edge] = true;
    links_.push_back({path, edge, segment, *backwards});
    return true;
  };
  const auto linkBesideTheLast = [&](std::size_t segment) {
    if (links_.empty()) return false;
    const auto [path, edge, last, backwards] = links_.back();
    const std::size_t count = edgesOf(paths[path]);
    return linkTo(segment, path, (edge + 1) % count) || linkTo(segment, path, (edge + count - 1) % count);
  };
  const auto linkAnywhere = [&](std::size_t segment) {
    for (const std::size_t path : madeFromIt) {
      for (std::size_t edge = 0; edge < edgesOf(paths[path]); ++edge) {
        if (linkTo(segment, path, edge)) return true;
      }
    }
    return false;
  };
  for (std::size_t segment = 0; segment < outline_.segments.size(); ++segment) {
    if (!linkBesideTheLast(segment) && !linkAnywhere(segment)) return false;
  }
  return true;
}

void FollowingHatch::follow(database::Drawing& drawing) const {
  const std::optional<SourceOutline> now =
      sourceOutline(drawing, source_, frameOf(database::Lens(drawing, hatch_), hatchSubclassName));
  if (!now || now->segments.size() != outline_.segments.size())
    throw BoundaryError("the entity has other segments than the boundary");
  const std::vector<HatchPath> paths = hatchPaths(database::Lens(drawing, hatch_), ends_);
  if (now->whole) {
    followWhole(drawing, paths, *now->whole);
  } else {
    followSegments(drawing, paths, now->segments);
  }
  followHeight(drawing, now->height);
  const database::Lens lens(drawing, hatch_);
  [[maybe_unused]] const double area = areaOf(hatchPaths(lens, ends_), hatchIslandStyle(lens));
}

void FollowingHatch::followWhole(database::Drawing& drawing, const std::vector<HatchPath>& paths,
                                 const EllipticalArc& whole) const {
  const Stretching stretching(*outline_.whole, whole);
  drawing.edit(hatch_, [&](dxf::Document& document) {
    Numbers numbers(document, hatch_);
    for (const std::size_t path : wholePaths_) {
      for (std::size_t edge = 0; edge < edgesOf(paths[path]); ++edge)
        putStretched(numbers, paths[path], edge, stretching, whole);
    }
  });
}

void FollowingHatch::followSegments(database::Drawing& drawing, const std::vector<HatchPath>& paths,
                                    const std::vector<OutlineSegment>& segments) const {
  std::vector<std::vector<std::optional<OutlineSegment>>> changed;
  for (const HatchPath& path : paths)
    changed.emplace_back(edgesOf(path));
  for (const Link& link : links_) {
    const OutlineSegment& segment = segments[link.segment];
    if (segment == outline_.segments[link.segment]) continue;
    changed[link.path][link.edge] =
        link.isBackwards ? OutlineSegment{segment.to, segment.from, -segment.bulge} : segment;
  }
  const double tolerance = toleranceFor(outline_);
  drawing.edit(hatch_, [&](dxf::Document& document) {
    Numbers numbers(document, hatch_);
    for (std::size_t path = 0; path < paths.size(); ++path) {
      if (std::holds_alternative<std::vector<BulgeVertex>>(paths[path].loop)) {
        putSides(numbers, paths[path], changed[path], tolerance);
        continue;
      }
      for (std::size_t edge = 0; edge < edgesOf(paths[path]); ++edge) {
        if (changed[path][edge]) putEdge(numbers, paths[path].places[edge], *changed[path][edge]);
      }
    }
  });
}

void FollowingHatch::followHeight(database::Drawing& drawing, double height) const {
  if (height == outline_.height) return;
  const database::Lens lens(drawing, hatch_);
  const bool isOnlySource = [&] {
    for (const HatchPath& path : hatchPaths(lens, ends_)) {
      const bool hasOthers = std::any_of(path.sources.begin(), path.sources.end(), [&](std::uint64_t handle) {
        return handle != drawing.handleOf(source_);
      });
      if (hasOthers || path.sources.empty()) return false;
    }
    return true;
  }();
  const std::optional<std::size_t> x = lens.find(10, hatchSubclassName);
  const auto isAt = [&](std::size_t pair, int code) {
    return pair < lens.view().size() && lens.view().code(pair) == code;
  };
  if (!isOnlySource || !x || !isAt(*x + 1, 20) || !isAt(*x + 2, 30)
      || std::abs(lens.real(30, hatchSubclassName, 0) - outline_.height) > toleranceFor(outline_)) {
    throw BoundaryError("the entity would leave the plane of the hatch");
  }
  drawing.edit(hatch_, [&](dxf::Document& document) { Numbers(document, hatch_).put(*x + 2, 30, height); });
}

}  // namespace velt::automation
