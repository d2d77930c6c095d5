#include "embedded/automation/polylines/VertexEditor.h"

#include <cmath>
#include <optional>

#include "dxf/Numbers.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/polylines/PolylineShape.h"

namespace velt::automation {
namespace {

constexpr const char* lightSubclass = "AcDbPolyline";
constexpr int commonWidthCode = 43;
constexpr int xCode = 10;
constexpr int yCode = 20;
constexpr int startWidthCode = 40;
constexpr int endWidthCode = 41;

struct VertexPairs {
  std::size_t x = 0;
  std::optional<std::size_t> y{}, startWidth{}, endWidth{};

  [[nodiscard]] std::size_t afterPlace() const { return y.value_or(x) + 1; }
};

std::vector<VertexPairs> vertexPairs(const dxf::RecordView& view) {
  std::vector<VertexPairs> vertices;
  view.visit(lightSubclass, [&](std::size_t index) {
    const int code = view.code(index);
    if (code == xCode) vertices.push_back({.x = index});
    if (vertices.empty()) return true;
    if (code == yCode) vertices.back().y = index;
    if (code == startWidthCode) vertices.back().startWidth = index;
    if (code == endWidthCode) vertices.back().endWidth = index;
    return true;
  });
  return vertices;
}

void requireFinite(double value) {
  if (!std::isfinite(value)) throw Refusal(DISP_E_OVERFLOW, L"The value is not a number.");
}

// Replaces the number or inserts it; what is there already stays as it is written.
void putNumber(dxf::Document& document, std::uint32_t record, std::optional<std::size_t> pair,
               std::size_t place, int code, double value) {
  if (!pair) {
    document.insert(record, place, code, dxf::formatReal(value));
  } else if (dxf::parseReal(document.view(record).value(*pair)) != value) {
    document.replace(record, *pair, dxf::formatReal(value));
  }
}

// From the last vertex to the first, so that the places of those that are left stay what they are.
void giveEachItsWidths(dxf::Document& document, std::uint32_t record, double width) {
  const std::vector<VertexPairs> vertices = vertexPairs(document.view(record));
  for (auto vertex = vertices.rbegin(); vertex != vertices.rend(); ++vertex) {
    if (!vertex->endWidth) {
      const std::size_t place = vertex->startWidth ? *vertex->startWidth + 1 : vertex->afterPlace();
      document.insert(record, place, endWidthCode, dxf::formatReal(width));
    }
    if (!vertex->startWidth) {
      document.insert(record, vertex->afterPlace(), startWidthCode, dxf::formatReal(width));
    }
  }
}

void endCommonWidth(dxf::Document& document, std::uint32_t record) {
  const auto pair = document.view(record).find(commonWidthCode, lightSubclass);
  if (!pair) return;
  const double width = dxf::parseReal(document.view(record).value(*pair)).value_or(0);
  document.erase(record, *pair);
  if (width > 0) giveEachItsWidths(document, record, width);
}

double partOf(const PolylineVertex& vertex, VertexPart part) {
  switch (part) {
    case VertexPart::X:
      return vertex.place.point.x;
    case VertexPart::Y:
      return vertex.place.point.y;
    case VertexPart::StartWidth:
      return vertex.startWidth;
    case VertexPart::EndWidth:
      break;
  }
  return vertex.endWidth;
}

}  // namespace

void putVertexPart(const Subject& polyline, std::size_t vertex, VertexPart part, double value) {
  requireFinite(value);
  const bool isWidth = part == VertexPart::StartWidth || part == VertexPart::EndWidth;
  if (isWidth) requireWithin(Limit::NotNegative, value);
  if (partOf(polylineShape(polyline).vertices[vertex], part) == value) return;
  const std::uint32_t record = polyline.record();
  polyline.drawing().edit(record, [&](dxf::Document& document) {
    if (isWidth) endCommonWidth(document, record);
    const VertexPairs pairs = vertexPairs(document.view(record))[vertex];
    switch (part) {
      case VertexPart::X:
        putNumber(document, record, pairs.x, pairs.x, xCode, value);
        break;
      case VertexPart::Y:
        putNumber(document, record, pairs.y, pairs.x + 1, yCode, value);
        break;
      case VertexPart::StartWidth:
        putNumber(document, record, pairs.startWidth, pairs.afterPlace(), startWidthCode, value);
        break;
      case VertexPart::EndWidth:
        putNumber(document, record, pairs.endWidth,
                  pairs.startWidth ? *pairs.startWidth + 1 : pairs.afterPlace(), endWidthCode, value);
        break;
    }
  });
}

void putVertexPlaces(const Subject& polyline, const std::vector<double>& coordinates) {
  for (const double coordinate : coordinates)
    requireFinite(coordinate);
  const std::uint32_t record = polyline.record();
  const std::size_t count = polylineShape(polyline).vertices.size();
  if (coordinates.size() != 2 * count) {
    throw Refusal(E_INVALIDARG, L"The number of vertices cannot be changed here.");
  }
  polyline.drawing().edit(record, [&](dxf::Document& document) {
    const std::vector<VertexPairs> vertices = vertexPairs(document.view(record));
    for (std::size_t i = count; i-- > 0;) {
      putNumber(document, record, vertices[i].y, vertices[i].x + 1, yCode, coordinates[2 * i + 1]);
      putNumber(document, record, vertices[i].x, vertices[i].x, xCode, coordinates[2 * i]);
    }
  });
}

void putCommonWidth(const Subject& polyline, double width) {
  requireFinite(width);
  requireWithin(Limit::NotNegative, width);
  const std::uint32_t record = polyline.record();
  const database::Lens lens = polyline.lens();
  if (polylineShape(polyline).width() == width) return;
  const bool hasOwn = lens.has(startWidthCode, lightSubclass) || lens.has(endWidthCode, lightSubclass);
  Editor(polyline).real(commonWidthCode, lightSubclass, width);
  if (!hasOwn) return;
  polyline.drawing().edit(record, [&](dxf::Document& document) {
    for (const int code : {startWidthCode, endWidthCode}) {
      const std::vector<std::size_t> old = document.view(record).findAll(code, lightSubclass);
      for (auto pair = old.rbegin(); pair != old.rend(); ++pair)
        document.erase(record, *pair);
    }
  });
}

}  // namespace velt::automation
