#include "embedded/automation/boundaries/HatchBoundary.h"

#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/Angle.h"

namespace velt::automation {
namespace {

constexpr std::string_view subclass = hatchSubclassName;
constexpr std::int64_t polylineFlag = 2;

[[noreturn]] void failCutShort() {
  throw BoundaryError("the boundary of the hatch is incomplete");
}

// Runs through the pairs of a hatch in their order, which is what tells the values of a boundary apart.
class Reader {
 public:
  explicit Reader(const database::Lens& hatch) {
    hatch.view().visit(subclass, [&](std::size_t index) {
      pairs_.push_back({index, hatch.view().code(index), hatch.view().value(index)});
      return true;
    });
  }

  [[nodiscard]] bool atEnd() const { return next_ == pairs_.size(); }
  [[nodiscard]] bool at(int code) const { return !atEnd() && pairs_[next_].code == code; }
  void skip() { ++next_; }
  // Where the next pair stands in the record.
  [[nodiscard]] std::size_t place() const { return atEnd() ? 0 : pairs_[next_].index; }

  // Passes over everything before the code.
  void seek(int code) {
    while (!atEnd() && !at(code))
      skip();
    if (atEnd()) failCutShort();
  }

  double real(int code) {
    if (!at(code)) failCutShort();
    const std::optional<double> value = dxf::parseReal(pairs_[next_++].value);
    if (!value) failCutShort();
    return *value;
  }

  std::int64_t integer(int code) {
    if (!at(code)) failCutShort();
    const auto value = dxf::parseInteger<std::int64_t>(pairs_[next_++].value);
    if (!value || *value < 0) failCutShort();
    return *value;
  }

  // The handle there, if the code is the next one.
  [[nodiscard]] std::optional<std::uint64_t> handleAt(int code) const {
    return at(code) ? dxf::parseHandle(pairs_[next_].value) : std::nullopt;
  }

  // How many things follow. Each takes a pair at least, so that a wrong number cannot ask for much memory.
  std::size_t count(int code) {
    const std::int64_t value = integer(code);
    if (static_cast<std::uint64_t>(value) > pairs_.size()) failCutShort();
    return static_cast<std::size_t>(value);
  }

  Vector2 point(int code) {
    const double x = real(code);
    return {x, real(code + 10)};
  }

 private:
  struct Pair {
    std::size_t index;
    int code;
    std::string_view value;
  };
  std::vector<Pair> pairs_;
  std::size_t next_ = 0;
};

std::vector<BulgeVertex> readPolyline(Reader& reader, std::vector<std::size_t>& places) {
  const bool hasBulges = reader.integer(72) != 0;
  reader.integer(73);  // closed or not: what bounds a hatch is closed
  std::vector<BulgeVertex> path(reader.count(93));
  for (BulgeVertex& vertex : path) {
    places.push_back(reader.place());
    vertex.point = reader.point(10);
    if (hasBulges && reader.at(42)) vertex.bulge = reader.real(42);
  }
  return path;
}

LineEdge readLine(Reader& reader) {
  const Vector2 from = reader.point(10);
  return {from, reader.point(11)};
}

// Where an arc begins and how far it goes. The angles of a clockwise one are measured clockwise.
std::pair<double, double> turned(double start, double end, bool counterclockwise) {
  const double sweep = sweepBetween(start, end);
  return counterclockwise ? std::pair(start, sweep) : std::pair(-start, -sweep);
}

EllipticalArc readArc(Reader& reader) {
  const Vector2 center = reader.point(10);
  const double radius = reader.real(40);
  const double from = radians(reader.real(50));
  const double to = radians(reader.real(51));
  const auto [start, sweep] = turned(from, to, reader.integer(73) != 0);
  return {center, {radius, 0}, {0, radius}, start, sweep};
}

EllipticalArc readEllipse(Reader& reader, EllipseEnds ends) {
  const Vector2 center = reader.point(10);
  const Vector2 major = reader.point(11);
  const double ratio = reader.real(40);
  double from = radians(reader.real(50));
  double to = radians(reader.real(51));
  if (ends == EllipseEnds::Angles && ratio > 0) {
    from = parameterOfAngle(from, ratio);
    to = parameterOfAngle(to, ratio);
  }
  const auto [start, sweep] = turned(from, to, reader.integer(73) != 0);
  return {center, major, ratio * perpendicular(major), start, sweep};
}

Spline readSpline(Reader& reader) {
  const std::int64_t degree = reader.integer(94);
  const bool rational = reader.integer(73) != 0;
  reader.integer(74);  // periodic or not: the knots say it all
  std::vector<double> knots(reader.count(95));
  std::vector<Vector2> points(reader.count(96));
  std::vector<double> weights;
  for (double& knot : knots)
    knot = reader.real(40);
  for (Vector2& point : points) {
    point = reader.point(10);
    if (rational) weights.push_back(reader.at(42) ? reader.real(42) : 1.0);
  }
  std::optional<Spline> spline =
      Spline::make(degree, std::move(knots), std::move(points), std::move(weights));
  if (!spline) throw BoundaryError("a spline of the boundary makes no sense");
  return *std::move(spline);
}

std::vector<BoundaryEdge> readEdges(Reader& reader, EllipseEnds ends, std::vector<std::size_t>& places) {
  std::vector<BoundaryEdge> edges;
  const std::size_t count = reader.count(93);
  for (std::size_t i = 0; i < count; ++i) {
    // Newer drawings end a spline with its fit points, in codes that stand nowhere else here.
    reader.seek(72);
    const std::int64_t kind = reader.integer(72);
    places.push_back(reader.place());
    switch (kind) {
      case 1:
        edges.emplace_back(readLine(reader));
        break;
      case 2:
        edges.emplace_back(readArc(reader));
        break;
      case 3:
        edges.emplace_back(readEllipse(reader, ends));
        break;
      case 4:
        edges.emplace_back(readSpline(reader));
        break;
      default:
        throw BoundaryError("the boundary has an edge of an unknown kind");
    }
  }
  return edges;
}

// Between a loop and the next one, or the style that follows the last.
std::vector<std::uint64_t> readSources(Reader& reader) {
  std::vector<std::uint64_t> sources;
  for (; !reader.atEnd() && !reader.at(92) && !reader.at(75); reader.skip()) {
    if (const auto handle = reader.handleAt(330)) sources.push_back(*handle);
  }
  return sources;
}

}  // namespace

std::vector<HatchPath> hatchPaths(const database::Lens& hatch, EllipseEnds ends) {
  Reader reader(hatch);
  reader.seek(91);
  std::vector<HatchPath> paths;
  const std::size_t count = reader.count(91);
  for (std::size_t i = 0; i < count; ++i) {
    reader.seek(92);
    HatchPath& path = paths.emplace_back();
    if ((reader.integer(92) & polylineFlag) != 0) {
      path.loop = readPolyline(reader, path.places);
    } else {
      path.loop = readEdges(reader, ends, path.places);
    }
    path.sources = readSources(reader);
  }
  return paths;
}

std::vector<BoundaryLoop> hatchLoops(const database::Lens& hatch, EllipseEnds ends) {
  std::vector<BoundaryLoop> loops;
  for (HatchPath& path : hatchPaths(hatch, ends))
    loops.push_back(std::move(path.loop));
  return loops;
}

IslandStyle hatchIslandStyle(const database::Lens& hatch) {
  switch (hatch.integer(75, subclass, 0)) {
    case 1:
      return IslandStyle::Outer;
    case 2:
      return IslandStyle::Ignore;
    default:
      return IslandStyle::Normal;
  }
}

double hatchArea(const database::Lens& hatch) {
  const IslandStyle style = hatchIslandStyle(hatch);
  try {
    return boundedArea(hatchLoops(hatch, EllipseEnds::Angles), style);
  } catch (const BoundaryError&) {
    // Of the two ways to read the ends of an elliptic edge, the one by which the edges meet was meant.
    return boundedArea(hatchLoops(hatch, EllipseEnds::Parameters), style);
  }
}

}  // namespace velt::automation
