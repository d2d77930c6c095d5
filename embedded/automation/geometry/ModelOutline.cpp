#include "embedded/automation/geometry/ModelOutline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <numbers>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/Boundary.h"
#include "embedded/automation/geometry/ObjectFrame.h"

#ifdef __cpp_lib_math_special_functions
using std::ellint_2;
#else  // libc++ has none of these functions
#include <boost/math/special_functions/ellint_2.hpp>
using boost::math::ellint_2;
#endif

namespace velt::automation {
namespace {

using Index = std::size_t;

// From here on edges tell their parameters.
constexpr int parameterVersion = 500;
// How far points that stand for the same one may lie apart, and what rounding adds far from the origin.
constexpr double pointSlack = 1e-6;
constexpr double roundingSlack = 1e-12;
constexpr double directionSlack = 1e-9;

[[noreturn]] void failMismatch() {
  throw ModelError("parts of the modeller's text contradict each other");
}

void require(bool condition) {
  if (!condition) failMismatch();
}

double slackAt(double coordinate) {
  return pointSlack + roundingSlack * std::abs(coordinate);
}

bool near(Vector2 a, Vector2 b) {
  return length(a - b) <= slackAt(length(a));
}

double lengthOf(const EllipticalArc& arc) {
  const double major = length(arc.major);
  const double ratio = length(arc.minor) / major;
  const double modulus = std::sqrt(std::max(0.0, (1 - ratio) * (1 + ratio)));
  // The integral counts from the end of the minor axis.
  const double from = ellint_2(modulus, arc.start - std::numbers::pi / 2);
  const double to = ellint_2(modulus, arc.start + arc.sweep - std::numbers::pi / 2);
  return major * std::abs(to - from);
}

// Walks from the body down to the curves. Each record of the tree is met once, so a text whose references run in
// circles comes to an end.
class Outline {
 public:
  explicit Outline(const ModelText& text) : text_(text) {}

  RegionSize size();

 private:
  // From vertex to vertex; edges that meet share one.
  struct Edge {
    BoundaryEdge shape;
    Index start;
    Index end;
    // How much of the curve's parameter it takes.
    double sweep;
    double length;
  };

  ModelFields take(Index record, std::string_view name);
  void requireAllTaken() const;
  double readTransform(Index transform);
  void readLumps(std::optional<Index> lump, Index body);
  void readShell(Index shell, Index lump);
  void readFaces(std::optional<Index> face, Index shell);
  void readPlane(Index surface);
  void readLoops(std::optional<Index> loop, Index face);
  void readCoedges(Index first, Index loop);
  Edge readEdge(Index record);
  void readLine(Index curve, bool reversed, Edge& edge) const;
  void readEllipse(Index curve, bool reversed, Edge& edge) const;
  [[nodiscard]] Vector2 pointOf(Index vertex) const;
  [[nodiscard]] Vector2 flat(const Vector3& point) const;

  const ModelText& text_;
  std::set<Index> taken_;
  std::optional<ObjectFrame> frame_;
  Vector3 origin_;
  std::vector<BoundaryLoop> loops_;
  double perimeter_ = 0;
};

ModelFields Outline::take(Index record, std::string_view name) {
  require(taken_.insert(record).second);
  return text_.fieldsOf(record, name);
}

// A part that nothing leads to belongs somewhere all the same.
void Outline::requireAllTaken() const {
  constexpr std::string_view parts[] = {"transform", "lump", "shell", "face", "loop", "coedge", "edge"};
  for (Index record = 0; record < text_.size(); ++record) {
    const bool isPart =
        std::find(std::begin(parts), std::end(parts), text_.nameOf(record)) != std::end(parts);
    require(!isPart || taken_.contains(record));
  }
}

RegionSize Outline::size() {
  std::optional<Index> body;
  for (Index record = 0; record < text_.size(); ++record) {
    if (text_.nameOf(record) != "body") continue;
    require(!body);
    body = record;
  }
  if (!body) throw ModelError("the modeller's text has no body");
  ModelFields fields = take(*body, "body");
  const Index lump = fields.required();
  require(!fields.reference());  // wires
  const std::optional<Index> transform = fields.reference();
  fields.end();
  const double scale = transform ? readTransform(*transform) : 1;
  readLumps(lump, *body);
  requireAllTaken();
  return {boundedArea(loops_, IslandStyle::Normal) * scale * scale, perimeter_ * scale};
}

// By how much it scales; it moves and turns, too, which changes no size.
double Outline::readTransform(Index transform) {
  ModelFields fields = take(transform, "transform");
  const Vector3 rows[] = {fields.vector(), fields.vector(), fields.vector()};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j)
      require(std::abs(dot(rows[i], rows[j]) - (i == j ? 1 : 0)) <= directionSlack);
  }
  fields.vector();
  const double scale = fields.number();
  require(scale > 0);
  for (int flag = 0; flag < 3; ++flag)
    fields.skip();  // what the rows tell already
  fields.end();
  return scale;
}

void Outline::readLumps(std::optional<Index> lump, Index body) {
  while (lump) {
    ModelFields fields = take(*lump, "lump");
    const std::optional<Index> next = fields.reference();
    const Index shell = fields.required();
    require(fields.reference() == body);
    fields.end();
    readShell(shell, *lump);
    lump = next;
  }
}

void Outline::readShell(Index shell, Index lump) {
  ModelFields fields = take(shell, "shell");
  require(!fields.reference());  // the next one, which would be a void
  require(!fields.reference());  // shells within
  const Index face = fields.required();
  require(!fields.reference());  // wires
  require(fields.reference() == lump);
  fields.end();
  readFaces(face, shell);
}

void Outline::readFaces(std::optional<Index> face, Index shell) {
  while (face) {
    ModelFields fields = take(*face, "face");
    const std::optional<Index> next = fields.reference();
    const Index loop = fields.required();
    require(fields.reference() == shell);
    require(!fields.reference());  // a shell within
    readPlane(fields.required());
    fields.choice("forward", "reversed");
    if (fields.choice("single", "double")) fields.choice("out", "in");
    fields.end();
    readLoops(loop, *face);
    face = next;
  }
}

// The first one is the plane of the region; that the others are the same shows when edges do not lie in it.
void Outline::readPlane(Index surface) {
  ModelFields fields = text_.fieldsOf(surface, "plane-surface");
  const Vector3 origin = fields.vector();
  const Vector3 normal = fields.vector();
  fields.vector();  // where the first parameter runs
  fields.skip();    // on which side the second one runs
  fields.range();
  fields.range();
  fields.end();
  require(std::abs(length(normal) - 1) <= pointSlack);
  if (frame_) return;
  frame_.emplace(normal);
  origin_ = origin;
}

void Outline::readLoops(std::optional<Index> loop, Index face) {
  while (loop) {
    ModelFields fields = take(*loop, "loop");
    const std::optional<Index> next = fields.reference();
    const Index coedge = fields.required();
    require(fields.reference() == face);
    fields.end();
    readCoedges(coedge, *loop);
    loop = next;
  }
}

void Outline::readCoedges(Index first, Index loop) {
  std::vector<BoundaryEdge> edges;
  std::vector<Index> vertices;  // where each edge starts, where it ends
  Index coedge = first;
  do {
    ModelFields fields = take(coedge, "coedge");
    coedge = fields.required();
    fields.required();   // the one before
    fields.reference();  // the one of another face
    Edge edge = readEdge(fields.required());
    if (fields.choice("forward", "reversed")) std::swap(edge.start, edge.end);
    require(fields.reference() == loop);
    require(!fields.reference());  // a curve on the surface
    fields.end();
    require(vertices.empty() || vertices.back() == edge.start);
    vertices.insert(vertices.end(), {edge.start, edge.end});
    edges.push_back(edge.shape);
    perimeter_ += edge.length;
  } while (coedge != first);
  require(vertices.front() == vertices.back());
  loops_.emplace_back(std::move(edges));
}

Outline::Edge Outline::readEdge(Index record) {
  ModelFields fields = take(record, "edge");
  const bool tellsParameters = text_.version() >= parameterVersion;
  Edge edge{{}, fields.required(), 0, 0, 0};
  const double first = tellsParameters ? fields.number() : 0;
  edge.end = fields.required();
  const double last = tellsParameters ? fields.number() : 0;
  fields.required();  // one of its coedges
  const Index curve = fields.required();
  const bool reversed = fields.choice("forward", "reversed");
  if (tellsParameters) fields.skip();  // whether faces meet here in a corner or smoothly
  fields.end();

  require(near(pointOf(edge.start), pointOf(edge.end)) == (edge.start == edge.end));
  if (text_.nameOf(curve) == "straight-curve") {
    readLine(curve, reversed, edge);
  } else if (text_.nameOf(curve) == "ellipse-curve") {
    readEllipse(curve, reversed, edge);
  } else {
    throw ModelError("the outline has a curve of a kind that is not read");
  }
  require(edge.sweep > 0);
  if (tellsParameters) require(std::abs(last - first - edge.sweep) <= slackAt(edge.sweep));
  return edge;
}

void Outline::readLine(Index curve, bool reversed, Edge& edge) const {
  ModelFields fields = text_.fieldsOf(curve, "straight-curve");
  const Vector3 origin = fields.vector();
  const Vector2 along = flat(origin + fields.vector()) - flat(origin);
  fields.range();
  fields.end();
  require(length(along) > pointSlack);
  const Vector2 from = pointOf(edge.start);
  const Vector2 to = pointOf(edge.end);
  for (const Vector2 end : {from, to})
    require(std::abs(cross(end - flat(origin), along)) <= slackAt(length(end)) * length(along));
  edge.sweep = dot(reversed ? from - to : to - from, along) / dot(along, along);
  edge.length = length(to - from);
  edge.shape = LineEdge{from, to};
}

void Outline::readEllipse(Index curve, bool reversed, Edge& edge) const {
  ModelFields fields = text_.fieldsOf(curve, "ellipse-curve");
  const Vector3 center = fields.vector();
  const double upright = dot(fields.vector(), frame_->normal());
  EllipticalArc arc{flat(center), flat(center + fields.vector()) - flat(center), {}, 0, 0};
  const double ratio = fields.number();
  fields.range();
  fields.end();
  require(std::abs(std::abs(upright) - 1) <= pointSlack);
  require(ratio * length(arc.major) > pointSlack && ratio <= 1);
  arc.minor = std::copysign(ratio, upright) * perpendicular(arc.major);
  // Where the ends lie tells their parameters, too, and in all versions.
  const auto parameterOf = [&](Vector2 point) {
    const Vector2 offset = point - arc.center;
    const double parameter = std::atan2(dot(offset, arc.minor) / (ratio * ratio), dot(offset, arc.major));
    require(near(arc.at(parameter), point));
    return parameter;
  };
  arc.start = parameterOf(pointOf(edge.start));
  const double end = parameterOf(pointOf(edge.end));
  edge.sweep = reversed ? sweepBetween(end, arc.start) : sweepBetween(arc.start, end);
  arc.sweep = reversed ? -edge.sweep : edge.sweep;
  edge.length = lengthOf(arc);
  edge.shape = arc;
}

Vector2 Outline::pointOf(Index vertex) const {
  ModelFields fields = text_.fieldsOf(vertex, "vertex");
  fields.required();  // one of its edges
  ModelFields point = text_.fieldsOf(fields.required(), "point");
  fields.end();
  const Vector3 found = point.vector();
  point.end();
  return flat(found);
}

Vector2 Outline::flat(const Vector3& point) const {
  const Vector3 inPlane = frame_->toObject(point - origin_);
  if (!(std::abs(inPlane.z) <= slackAt(length(point)))) {
    throw ModelError("the outline does not lie in one plane");
  }
  return {inPlane.x, inPlane.y};
}

}  // namespace

RegionSize sizeOfRegion(const ModelText& text) {
  return Outline(text).size();
}

}  // namespace velt::automation
