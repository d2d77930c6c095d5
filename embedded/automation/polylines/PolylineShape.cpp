#include "embedded/automation/polylines/PolylineShape.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

#include "dxf/Numbers.h"
#include "embedded/database/LastAsked.h"

namespace velt::automation {
namespace {

constexpr std::string_view subclass = "AcDbPolyline";
constexpr std::int64_t closedBit = 1;

PolylineShape readShape(const database::Lens& lens) {
  PolylineShape shape;
  shape.closed = (lens.integer(70, subclass, 0) & closedBit) != 0;
  lens.view().visit(subclass, [&](std::size_t index) {
    const int code = lens.view().code(index);
    const auto number = [&] { return dxf::parseReal(lens.view().value(index)).value_or(0.0); };
    if (code == 43) shape.commonWidth = number();
    if (code == 10) {
      shape.vertices.push_back({});
      shape.vertices.back().place.point.x = number();
      shape.vertices.back().startWidth = shape.vertices.back().endWidth = shape.commonWidth;
    }
    if (shape.vertices.empty()) return true;
    PolylineVertex& vertex = shape.vertices.back();
    if (code == 20) vertex.place.point.y = number();
    if (code == 40) vertex.startWidth = number();
    if (code == 41) vertex.endWidth = number();
    if (code == 42) vertex.place.bulge = number();
    return true;
  });
  return shape;
}

}  // namespace

std::optional<double> PolylineShape::width() const {
  if (vertices.empty()) return commonWidth;
  const double width = vertices.front().startWidth;
  const bool isSame = std::all_of(vertices.begin(), vertices.end(), [width](const PolylineVertex& vertex) {
    return vertex.startWidth == width && vertex.endWidth == width;
  });
  return isSame ? std::optional(width) : std::nullopt;
}

std::vector<BulgeVertex> PolylineShape::path() const {
  std::vector<BulgeVertex> path;
  path.reserve(vertices.size());
  for (const PolylineVertex& vertex : vertices)
    path.push_back(vertex.place);
  return path;
}

const PolylineShape& polylineShape(const Subject& subject) {
  thread_local database::LastAsked<PolylineShape> last;
  return last.of(subject.id(), subject.drawing(), [&] { return readShape(subject.lens()); });
}

}  // namespace velt::automation
