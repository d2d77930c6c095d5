#include "embedded/automation/boundaries/SourceOutline.h"

#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/BulgePath.h"
#include "embedded/automation/geometry/EntityGeometry.h"

namespace velt::automation {
namespace {

constexpr std::string_view circle = "AcDbCircle";
constexpr std::string_view ellipse = "AcDbEllipse";
constexpr std::string_view lightPolyline = "AcDbPolyline";
constexpr std::int64_t closedBit = 1;
// Those that are smoothed, stand in space, or are meshes.
constexpr std::int64_t otherPolylines = 2 | 4 | 8 | 16 | 64;
// Vertices say their kind in several markers, but no code twice.
constexpr std::string_view any = dxf::anySubclass;

// The way from the coordinates of one plane to those of another one that is parallel to it.
class Passage {
 public:
  // Nothing when they are not parallel.
  static std::optional<Passage> between(const Vector3& normal, const ObjectFrame& to) {
    constexpr double slack = 1e-9;
    const ObjectFrame from(normal);
    if (length(cross(from.normal(), to.normal())) > slack) return std::nullopt;
    return Passage(from, to);
  }

  // Counterclockwise is clockwise there.
  [[nodiscard]] bool isSeenFromBehind() const { return dot(from_.normal(), to_.normal()) < 0; }
  [[nodiscard]] Vector3 operator()(const Vector3& place) const {
    // Unrounded, as it is for nearly every entity.
    if (from_.normal() == to_.normal()) return place;
    return to_.toObject(from_.toWorld(place));
  }

 private:
  Passage(const ObjectFrame& from, const ObjectFrame& to) : from_(from), to_(to) {}

  ObjectFrame from_;
  ObjectFrame to_;
};

Vector2 flat(const Vector3& point) {
  return {point.x, point.y};
}

std::optional<SourceOutline> outlineOfCircle(const database::Lens& lens, const ObjectFrame& plane) {
  const auto passage = Passage::between(normalOf(lens, circle), plane);
  const double radius = lens.real(40, circle, 0);
  if (!passage || !(radius > 0)) return std::nullopt;
  const Vector3 center = (*passage)(pointAt(lens, 10, circle));
  SourceOutline outline{.height = center.z};
  outline.whole = {flat(center), {radius, 0}, {0, radius}, 0, fullTurn};
  return outline;
}

std::optional<SourceOutline> outlineOfEllipse(const database::Lens& lens, const ObjectFrame& plane) {
  constexpr double slack = 1e-9;
  const double sweep = lens.real(42, ellipse, fullTurn) - lens.real(41, ellipse, 0);
  const double ratio = lens.real(40, ellipse, 1);
  if (!Passage::between(normalOf(lens, ellipse), plane) || !(ratio > 0)) return std::nullopt;
  if (std::abs(sweep - fullTurn) > slack) return std::nullopt;
  // Stored in the world's coordinates.
  const Vector3 center = plane.toObject(pointAt(lens, 10, ellipse));
  const Vector2 major = flat(plane.toObject(pointAt(lens, 11, ellipse)));
  SourceOutline outline{.height = center.z};
  outline.whole = {flat(center), major, ratio * perpendicular(major), 0, fullTurn};
  return outline;
}

std::optional<SourceOutline> outlineOfPath(const std::vector<BulgeVertex>& path, bool isClosed,
                                           double elevation, const Passage& passage) {
  SourceOutline outline{.height = passage({0, 0, elevation}).z};
  const auto placeOf = [&](const BulgeVertex& vertex) {
    return flat(passage({vertex.point.x, vertex.point.y, elevation}));
  };
  for (std::size_t i = 0; i + (isClosed ? 0 : 1) < path.size(); ++i) {
    const OutlineSegment segment{placeOf(path[i]), placeOf(path[(i + 1) % path.size()]),
                                 passage.isSeenFromBehind() ? -path[i].bulge : path[i].bulge};
    // Hatches leave out what has no length.
    if (segment.from != segment.to) outline.segments.push_back(segment);
  }
  return outline.segments.empty() ? std::nullopt : std::optional(std::move(outline));
}

std::optional<SourceOutline> outlineOfLightPolyline(const database::Lens& lens, const ObjectFrame& plane) {
  const auto passage = Passage::between(normalOf(lens, lightPolyline), plane);
  if (!passage) return std::nullopt;
  std::vector<BulgeVertex> path;
  lens.view().visit(lightPolyline, [&](std::size_t index) {
    const int code = lens.view().code(index);
    const auto number = [&] { return dxf::parseReal(lens.view().value(index)).value_or(0.0); };
    if (code == 10) path.push_back({{number(), 0}});
    if (code == 20 && !path.empty()) path.back().point.y = number();
    if (code == 42 && !path.empty()) path.back().bulge = number();
    return true;
  });
  const bool isClosed = (lens.integer(70, lightPolyline, 0) & closedBit) != 0;
  return outlineOfPath(path, isClosed, lens.real(38, lightPolyline, 0), *passage);
}

std::optional<SourceOutline> outlineOfHeavyPolyline(const database::Lens& lens, std::uint32_t record,
                                                    const ObjectFrame& plane) {
  const std::int64_t flags = lens.integer(70, any, 0);
  const auto passage = Passage::between(normalOf(lens, any), plane);
  if (!passage || (flags & otherPolylines) != 0) return std::nullopt;
  std::vector<BulgeVertex> path;
  const database::RecordRange members = lens.drawing().members(record);
  for (std::uint32_t member = members.first; member < members.first + members.count; ++member) {
    if (lens.drawing().isErased(member)) continue;
    const database::Lens vertex(lens.drawing(), member);
    path.push_back({flat(pointAt(vertex, 10, any)), vertex.real(42, any, 0)});
  }
  return outlineOfPath(path, (flags & closedBit) != 0, pointAt(lens, 10, any).z, *passage);
}

}  // namespace

std::optional<SourceOutline> sourceOutline(const database::Drawing& drawing, std::uint32_t record,
                                           const ObjectFrame& plane) {
  const database::Lens lens(drawing, record);
  if (lens.type() == "CIRCLE") return outlineOfCircle(lens, plane);
  if (lens.type() == "ELLIPSE") return outlineOfEllipse(lens, plane);
  if (lens.type() == "LWPOLYLINE") return outlineOfLightPolyline(lens, plane);
  if (lens.type() == "POLYLINE") return outlineOfHeavyPolyline(lens, record, plane);
  return std::nullopt;
}

}  // namespace velt::automation
