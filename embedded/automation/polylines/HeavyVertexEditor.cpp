#include "embedded/automation/polylines/HeavyVertexEditor.h"

#include <variant>

#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"

namespace velt::automation {
namespace {

// Vertices say their kind in several markers, but no code twice.
constexpr const char* anySubclass = "*";

constexpr int heightCode = static_cast<int>(HeavyVertexPart::Z);
constexpr int widthCodes[] = {static_cast<int>(HeavyVertexPart::StartWidth),
                              static_cast<int>(HeavyVertexPart::EndWidth)};

double partOf(const HeavyPolyline& shape, std::size_t vertex, HeavyVertexPart part) {
  switch (part) {
    case HeavyVertexPart::X:
      return shape.places[vertex].x;
    case HeavyVertexPart::Y:
      return shape.places[vertex].y;
    case HeavyVertexPart::Z:
      return shape.places[vertex].z;
    case HeavyVertexPart::StartWidth:
      return shape.widths[vertex].start;
    case HeavyVertexPart::EndWidth:
      break;
  }
  return shape.widths[vertex].end;
}

const Reason* whySmoothed(const Subject& polyline) {
  constexpr std::int64_t smoothed = 2 | 4;
  return (polyline.lens().integer(70, anySubclass, 0) & smoothed) != 0 ? &reasons::smoothed : nullptr;
}

void requireNotSmoothed(const Subject& polyline) {
  if (const Reason* const why = whySmoothed(polyline)) throw Refusal(*why);
}

// All vertices, also those that make the curve of a smoothed polyline.
template <class Change>
void changeEachVertex(const Subject& polyline, Change change) {
  database::Drawing& drawing = polyline.drawing();
  const database::RecordRange members = drawing.members(polyline.record());
  for (std::uint32_t record = members.first; record < members.first + members.count; ++record) {
    if (drawing.isErased(record) || drawing.view(record).type() != "VERTEX") continue;
    Editor editor(drawing, record);
    change(editor);
  }
}

}  // namespace

constinit const Obstacle isSmoothed = {L"it is smoothed.", whySmoothed};

void putHeavyVertexPart(const Subject& polyline, std::size_t vertex, HeavyVertexPart part, double value) {
  const bool isWidth = part == HeavyVertexPart::StartWidth || part == HeavyVertexPart::EndWidth;
  if (isWidth) requireWithin(Limit::NotNegative, value);
  const HeavyPolyline& shape = heavyPolyline(polyline);
  if (partOf(shape, vertex, part) == value) return;
  requireNotSmoothed(polyline);
  Editor(polyline.drawing(), shape.records[vertex]).real(static_cast<int>(part), anySubclass, value);
}

void putHeavyVertexPlaces(const Subject& polyline, std::size_t ofEach,
                          const std::vector<double>& coordinates) {
  constexpr HeavyVertexPart parts[] = {HeavyVertexPart::X, HeavyVertexPart::Y, HeavyVertexPart::Z};
  const HeavyPolyline before = heavyPolyline(polyline);
  if (coordinates.size() != ofEach * before.places.size())
    throw Refusal(E_INVALIDARG, L"The number of vertices cannot be changed here.");
  for (std::size_t i = 0; i < coordinates.size(); ++i) {
    const std::size_t vertex = i / ofEach;
    const HeavyVertexPart part = parts[i % ofEach];
    if (partOf(before, vertex, part) == coordinates[i]) continue;
    requireNotSmoothed(polyline);
    Editor(polyline.drawing(), before.records[vertex])
        .real(static_cast<int>(part), anySubclass, coordinates[i]);
  }
}

void putHeavyCommonWidth(const Subject& polyline, double width) {
  requireWithin(Limit::NotNegative, width);
  if (heavyPolyline(polyline).width() == width) return;
  Editor head(polyline);
  for (const int code : widthCodes)
    head.real(code, anySubclass, width);
  changeEachVertex(polyline, [](Editor& vertex) {
    for (const int code : widthCodes)
      vertex.remove(code, anySubclass);
  });
}

void putHeavyElevation(const Subject& polyline, double elevation) {
  Vector3 origin = pointAt(polyline.lens(), 10, anySubclass);
  if (origin.z == elevation) return;
  origin.z = elevation;
  Editor(polyline).point(10, anySubclass, origin);
  changeEachVertex(polyline, [&](Editor& vertex) { vertex.real(heightCode, anySubclass, elevation); });
}

std::vector<Vector3> heavyVertexPlaces(const Subject& polyline) {
  return heavyPolyline(polyline).places;
}

namespace access {

void putHeavyVertices(const Subject& polyline, const PropertyRow&, const Value& value) {
  // Three numbers come as a point.
  const auto* const only = std::get_if<Vector3>(&value);
  putHeavyVertexPlaces(polyline, 3,
                       only != nullptr ? coordinatesOf({only, 1}) : valueAs<std::vector<double>>(value));
}

void putHeavyVertexElement(const Subject& polyline, const PropertyRow&, std::size_t element, double value) {
  constexpr HeavyVertexPart parts[] = {HeavyVertexPart::X, HeavyVertexPart::Y, HeavyVertexPart::Z};
  putHeavyVertexPart(polyline, element / 3, parts[element % 3], value);
}

void putBitUnlessSmoothed(const Subject& polyline, const PropertyRow& row, const Value& value) {
  if (std::get<bool>(getBit(polyline, row)) == valueAs<bool>(value)) return;
  requireNotSmoothed(polyline);
  putBit(polyline, row, value);
}

}  // namespace access
}  // namespace velt::automation
