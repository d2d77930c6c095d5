#include <array>
#include <cstdint>
#include <set>
#include <utility>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "view/entities/Entities.h"

namespace velt::view::entities {

void drawSolid(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbTrace";
  const Transform plane = place.toSpace().after(Transform::ofFrame(automation::frameOf(entity, subclass)));
  Outline area{{}, true};
  // The third and the fourth corner are stored crosswise.
  for (const int code : {10, 11, 13, 12}) {
    if (entity.has(code, subclass))
      area.points.push_back(plane.flat(automation::pointAt(entity, code, subclass)));
  }
  painter.canvas().fill(painter.pen(place), std::span(&area, 1));
}

void drawFace(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbFace";
  constexpr std::size_t corners = 4;
  const std::int64_t hidden = entity.integer(70, subclass, 0);
  std::array<Vector2, corners> points;
  for (std::size_t i = 0; i < corners; ++i) {
    const int code = 10 + static_cast<int>(i);
    // A triangle may leave the last corner out.
    points[i] = entity.has(code, subclass) || i == 0
                    ? place.toSpace().flat(automation::pointAt(entity, code, subclass))
                    : points[i - 1];
  }
  std::vector<Outline> edges;
  for (std::size_t i = 0; i < corners; ++i) {
    const Vector2 to = points[(i + 1) % corners];
    if ((hidden >> i & 1) == 0 && points[i] != to) edges.push_back({{points[i], to}});
  }
  painter.canvas().path(painter.dashedPen(place), edges);
}

void drawMesh(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbSubDMesh";
  std::vector<Vector2> points;
  for (const database::Point& point : entity.points(10, subclass))
    points.push_back(place.toSpace().flat(automation::vectorOf(point)));
  // After the points: a list of faces, each as how many corners it has and which these are. Code 90 means other things
  // before and after it.
  const dxf::RecordView& view = entity.view();
  std::vector<std::int64_t> list;
  std::size_t left = 0;
  view.visit(subclass, [&](std::size_t index) {
    const int code = view.code(index);
    if (code == 93) {
      left = static_cast<std::size_t>(
          std::max<std::int64_t>(0, dxf::parseInteger<std::int64_t>(view.value(index)).value_or(0)));
      return true;
    }
    if (code != 90 || left == 0) return list.empty() || left > 0;
    list.push_back(dxf::parseInteger<std::int64_t>(view.value(index)).value_or(-1));
    --left;
    return true;
  });
  std::set<std::pair<std::int64_t, std::int64_t>> edges;
  for (std::size_t at = 0; at < list.size();) {
    const std::int64_t corners = list[at++];
    if (corners < 0 || static_cast<std::size_t>(corners) > list.size() - at) break;
    for (std::size_t i = 0; i < static_cast<std::size_t>(corners); ++i) {
      const std::int64_t from = list[at + i];
      const std::int64_t to = list[at + (i + 1) % static_cast<std::size_t>(corners)];
      edges.insert(std::minmax(from, to));
    }
    at += static_cast<std::size_t>(corners);
  }
  std::vector<Outline> lines;
  const auto count = static_cast<std::int64_t>(points.size());
  for (const auto& [from, to] : edges) {
    if (from < 0 || to >= count) continue;
    lines.push_back({{points[static_cast<std::size_t>(from)], points[static_cast<std::size_t>(to)]}});
  }
  painter.canvas().path(painter.dashedPen(place), lines);
}

}  // namespace velt::view::entities
