#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "view/entities/Entities.h"

namespace velt::view::entities {
namespace {

using automation::pointAt;

struct Vertex {
  Vector3 point{};
  double bulge = 0;
  double startWidth = 0;
  double endWidth = 0;
};

// A broad segment that becomes narrower or broader: an area beside its line.
Outline taperedSegment(std::span<const Vector2> line, double startWidth, double endWidth) {
  double total = 0;
  for (std::size_t i = 1; i < line.size(); ++i)
    total += length(line[i] - line[i - 1]);
  Outline area{{}, true};
  std::vector<Vector2> right;
  double reached = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const Vector2 along = line[std::min(i + 1, line.size() - 1)] - line[i > 0 ? i - 1 : 0];
    const double size = length(along);
    if (i > 0) reached += length(line[i] - line[i - 1]);
    if (!(size > 0)) continue;
    const double part = total > 0 ? reached / total : 0;
    const double half = (startWidth + part * (endWidth - startWidth)) / 2;
    const Vector2 aside = (half / size) * perpendicular(along);
    area.points.push_back(line[i] + aside);
    right.push_back(line[i] - aside);
  }
  area.points.insert(area.points.end(), right.rbegin(), right.rend());
  return area;
}

// Segments of the plane, as they are seen.
class PolylineDrawer {
 public:
  PolylineDrawer(Painter& painter, const Place& place, const Transform& plane)
      : painter_(painter), place_(place), plane_(plane) {}

  void draw(const std::vector<Vertex>& vertices, bool isClosed) {
    if (vertices.empty()) return;
    const double width = vertices.front().startWidth;
    const auto isAsBroad = [width](const Vertex& vertex) {
      return std::abs(vertex.startWidth - width) <= 1e-9 * width
             && std::abs(vertex.endWidth - width) <= 1e-9 * width;
    };
    const auto last = isClosed ? vertices.end() : vertices.end() - 1;
    if (width < 0 || !std::isfinite(width) || std::all_of(vertices.begin(), last, isAsBroad)) {
      drawEven(vertices, isClosed, width > 0 && std::isfinite(width) ? width * plane_.scale() : 0);
    } else {
      drawTapered(vertices, isClosed);
    }
  }

 private:
  void drawEven(const std::vector<Vertex>& vertices, bool isClosed, double width) {
    std::vector<Vector2> points = {plane_.flat(vertices.front().point)};
    for (std::size_t i = 1; i < vertices.size(); ++i)
      appendSegment(points, vertices[i - 1], vertices[i]);
    if (isClosed && vertices.size() > 1 && vertices.back().bulge != 0)
      appendSegment(points, vertices.back(), vertices.front());
    Pen pen = painter_.dashedPen(place_);
    pen.width = width;
    painter_.canvas().path(pen, points, isClosed && vertices.size() > 1);
  }

  void drawTapered(const std::vector<Vertex>& vertices, bool isClosed) {
    const std::size_t segments = isClosed ? vertices.size() : vertices.size() - 1;
    std::vector<Outline> areas;
    std::vector<Outline> lines;
    for (std::size_t i = 0; i < segments; ++i) {
      const Vertex& from = vertices[i];
      std::vector<Vector2> points = {plane_.flat(from.point)};
      appendSegment(points, from, vertices[(i + 1) % vertices.size()]);
      const double factor = plane_.scale();
      if (from.startWidth > 0 || from.endWidth > 0) {
        areas.push_back(taperedSegment(points, from.startWidth * factor, from.endWidth * factor));
      } else {
        lines.push_back({std::move(points)});
      }
    }
    // Each by itself: where they overlap nothing is left out.
    for (const Outline& area : areas)
      painter_.canvas().fill(painter_.pen(place_), std::span(&area, 1));
    painter_.canvas().path(painter_.dashedPen(place_), lines);
  }

  // Arcs are those of the plane, so they are found there and then seen from above.
  void appendSegment(std::vector<Vector2>& points, const Vertex& from, const Vertex& to) {
    const Vector2 start{from.point.x, from.point.y};
    const Vector2 end{to.point.x, to.point.y};
    constexpr double flattest = 1e-9;
    if (std::abs(from.bulge) > flattest && std::isfinite(from.bulge) && start != end) {
      automation::EllipticalArc arc = automation::EllipticalArc::ofBulge(start, end, from.bulge);
      arc.center = plane_.flat({arc.center.x, arc.center.y, from.point.z});
      arc.major = plane_.flatAlong({arc.major.x, arc.major.y, 0});
      arc.minor = plane_.flatAlong({arc.minor.x, arc.minor.y, 0});
      appendArc(points, arc, painter_.canvas().tolerance());
    }
    const Vector2 there = plane_.flat(to.point);
    if (points.back() != there) points.push_back(there);
  }

  Painter& painter_;
  const Place& place_;
  Transform plane_;
};

// --- meshes ---

void strokeEdges(Painter& painter, const Place& place, const std::vector<Vector2>& points, std::size_t rows,
                 std::size_t columns, bool rowsClosed, bool columnsClosed) {
  std::vector<Outline> lines;
  for (std::size_t row = 0; row < rows; ++row) {
    lines.push_back({{}, columnsClosed});
    for (std::size_t column = 0; column < columns; ++column)
      lines.back().points.push_back(points[row * columns + column]);
  }
  for (std::size_t column = 0; column < columns; ++column) {
    lines.push_back({{}, rowsClosed});
    for (std::size_t row = 0; row < rows; ++row)
      lines.back().points.push_back(points[row * columns + column]);
  }
  painter.canvas().path(painter.dashedPen(place), lines);
}

// Faces name their corners by number, from 1; a negative one says that the edge to the next corner is not seen.
void strokeFaces(Painter& painter, const Place& place, const std::vector<Vector2>& points,
                 const std::vector<std::array<std::int64_t, 4>>& faces) {
  std::vector<Outline> lines;
  const auto pointOf = [&](std::int64_t corner) {
    const auto number = static_cast<std::size_t>(std::abs(corner));
    return number >= 1 && number <= points.size() ? &points[number - 1] : nullptr;
  };
  for (const std::array<std::int64_t, 4>& face : faces) {
    const auto corners = static_cast<std::size_t>(std::find(face.begin(), face.end(), 0) - face.begin());
    for (std::size_t i = 0; i < corners; ++i) {
      const Vector2* const from = pointOf(face[i]);
      const Vector2* const to = pointOf(face[(i + 1) % corners]);
      if (face[i] > 0 && from != nullptr && to != nullptr) lines.push_back({{*from, *to}});
    }
  }
  painter.canvas().path(painter.dashedPen(place), lines);
}

std::size_t countOf(const Lens& head, int smoothCode, int code, bool isSmoothed) {
  std::int64_t count = isSmoothed ? head.integer(smoothCode, dxf::anySubclass, 0) : 0;
  if (count <= 0) count = head.integer(code, dxf::anySubclass, 0);
  return static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, 65'535));
}

}  // namespace

void drawLightPolyline(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbPolyline";
  std::vector<Vertex> vertices;
  const dxf::RecordView& view = entity.view();
  const double elevation = entity.real(38, subclass, 0);
  const double width = entity.real(43, subclass, 0);
  view.visit(subclass, [&](std::size_t index) {
    const int code = view.code(index);
    const bool isOfVertex = code == 10 || code == 20 || (code >= 40 && code <= 42);
    if (!isOfVertex) return true;
    const double number = dxf::parseReal(view.value(index)).value_or(0);
    if (code == 10) vertices.push_back({{number, 0, elevation}, 0, width, width});
    if (vertices.empty()) return true;
    Vertex& vertex = vertices.back();
    if (code == 20) vertex.point.y = number;
    if (code == 40) vertex.startWidth = number;
    if (code == 41) vertex.endWidth = number;
    if (code == 42) vertex.bulge = number;
    return true;
  });
  const bool isClosed = (entity.integer(70, subclass, 0) & 1) != 0;
  const Transform plane = place.toSpace().after(Transform::ofFrame(automation::frameOf(entity, subclass)));
  PolylineDrawer(painter, place, plane).draw(vertices, isClosed);
}

void drawHeavyPolyline(Painter& painter, const Lens& entity, const Place& place) {
  // Of the head.
  constexpr std::int64_t closed = 1;
  constexpr std::int64_t smoothed = 4;
  constexpr std::int64_t in3d = 8;
  constexpr std::int64_t polygonMesh = 16;
  constexpr std::int64_t columnsClosed = 32;
  constexpr std::int64_t polyface = 64;
  // Of a vertex.
  constexpr std::int64_t ofFrame = 16;
  constexpr std::int64_t meshVertex = 64;
  constexpr std::int64_t polyfacePart = 128;

  const std::int64_t flags = entity.integer(70, dxf::anySubclass, 0);
  const bool isInSpace = (flags & (in3d | polygonMesh | polyface)) != 0;
  const Transform plane =
      isInSpace ? place.toSpace()
                : place.toSpace().after(Transform::ofFrame(automation::frameOf(entity, dxf::anySubclass)));
  const double startWidth = isInSpace ? 0 : entity.real(40, dxf::anySubclass, 0);
  const double endWidth = isInSpace ? 0 : entity.real(41, dxf::anySubclass, 0);
  const double elevation = isInSpace ? 0 : entity.real(30, dxf::anySubclass, 0);

  std::vector<Vertex> vertices;
  std::vector<std::array<std::int64_t, 4>> faces;
  const database::RecordRange members = painter.drawing().members(place.record);
  for (std::uint32_t record = members.first; record < members.first + members.count; ++record) {
    if (painter.drawing().isErased(record)) continue;
    const Lens vertex(painter.drawing(), record);
    const std::int64_t kind = vertex.integer(70, dxf::anySubclass, 0);
    if ((flags & polyface) != 0 && (kind & polyfacePart) != 0 && (kind & meshVertex) == 0) {
      std::array<std::int64_t, 4> corners{};
      for (std::size_t i = 0; i < corners.size(); ++i)
        corners[i] = vertex.integer(71 + static_cast<int>(i), dxf::anySubclass, 0);
      faces.push_back(corners);
      continue;
    }
    // The frame of a smoothed one is not seen.
    if ((kind & ofFrame) != 0) continue;
    Vector3 point = pointAt(vertex, 10, dxf::anySubclass);
    if (!isInSpace) point.z = elevation;
    vertices.push_back({point, isInSpace ? 0 : vertex.real(42, dxf::anySubclass, 0),
                        isInSpace ? 0 : vertex.real(40, dxf::anySubclass, startWidth),
                        isInSpace ? 0 : vertex.real(41, dxf::anySubclass, endWidth)});
  }
  std::vector<Vector2> points;
  if ((flags & (polygonMesh | polyface)) != 0) {
    for (const Vertex& vertex : vertices)
      points.push_back(plane.flat(vertex.point));
  }
  if ((flags & polyface) != 0) {
    strokeFaces(painter, place, points, faces);
  } else if ((flags & polygonMesh) != 0) {
    const bool isSmooth = (flags & smoothed) != 0;
    const std::size_t rows = countOf(entity, 73, 71, isSmooth);
    const std::size_t columns = countOf(entity, 74, 72, isSmooth);
    if (columns > 0 && rows * columns <= points.size())
      strokeEdges(painter, place, points, rows, columns, (flags & closed) != 0, (flags & columnsClosed) != 0);
  } else {
    PolylineDrawer(painter, place, plane).draw(vertices, (flags & closed) != 0);
  }
}

void drawMultiline(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbMline";
  // Of each vertex: where it is, in which direction its corner points, and how far along it each line passes.
  struct Corner {
    Vector3 point{};
    Vector3 along{};
    std::vector<double> lines{};
  };
  std::vector<Corner> corners;
  const dxf::RecordView& view = entity.view();
  bool isFirst = false;
  view.visit(subclass, [&](std::size_t index) {
    const int code = view.code(index);
    const double number = code < 60 ? dxf::parseReal(view.value(index)).value_or(0) : 0;
    if (code == 11) corners.push_back({{number, 0, 0}});
    if (corners.empty()) return true;
    Corner& corner = corners.back();
    if (code == 21) corner.point.y = number;
    if (code == 31) corner.point.z = number;
    if (code == 13) corner.along.x = number;
    if (code == 23) corner.along.y = number;
    if (code == 33) corner.along.z = number;
    // The first parameter of each line; what follows are gaps in it.
    if (code == 74) isFirst = true;
    if (code == 41 && isFirst) {
      corner.lines.push_back(number);
      isFirst = false;
    }
    return true;
  });
  if (corners.empty()) return;

  // The colors of its lines are those of the style, which is found by its handle.
  std::vector<std::int64_t> colors;
  if (const auto style = painter.drawing().recordByHandle(entity.handle(340, subclass))) {
    const dxf::RecordView lines = painter.drawing().view(*style);
    lines.visit("AcDbMlineStyle", [&](std::size_t index) {
      if (lines.code(index) == 49) colors.push_back(256);
      if (lines.code(index) == 62 && !colors.empty())
        colors.back() = dxf::parseInteger<std::int64_t>(lines.value(index)).value_or(256);
      return true;
    });
  }
  const bool isClosed = (entity.integer(71, subclass, 0) & 2) != 0;
  const Pen pen = painter.dashedPen(place);
  for (std::size_t line = 0; line < corners.front().lines.size(); ++line) {
    std::vector<Vector2> points;
    for (const Corner& corner : corners) {
      if (line < corner.lines.size())
        points.push_back(place.toSpace().flat(corner.point + corner.lines[line] * corner.along));
    }
    Pen own = pen;
    constexpr std::int64_t byLayer = 256;
    if (line < colors.size() && colors[line] != byLayer)
      own.ink = painter.appearance().inkOf(colors[line], place.look);
    painter.canvas().path(own, points, isClosed);
  }
}

}  // namespace velt::view::entities
