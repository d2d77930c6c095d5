#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/database/Dictionary.h"
#include "view/entities/Entities.h"

namespace velt::view::entities {
namespace {

using automation::pointAt;

// A reference may be cut off along an outline that its extension dictionary holds.
void clipAsTold(Painter& painter, const Place& place, const Transform& toWorld, Surroundings& inner) {
  constexpr std::string_view subclass = "AcDbSpatialFilter";
  const database::Drawing& drawing = painter.drawing();
  const auto extension = database::extensionDictionary(drawing, place.record);
  const auto filters =
      extension ? database::dictionaryEntry(drawing, *extension, "ACAD_FILTER") : std::nullopt;
  const auto filter = filters ? database::dictionaryEntry(drawing, *filters, "SPATIAL") : std::nullopt;
  if (!filter) return;
  const Lens lens(drawing, *filter);
  if (lens.integer(71, subclass, 0) == 0) return;
  std::vector<Vector2> corners;
  for (const database::Point& point : lens.points(10, subclass))
    corners.push_back({point[0], point[1]});
  // Two corners are those of an upright rectangle.
  if (corners.size() == 2) {
    const Vector2 low = corners[0];
    const Vector2 high = corners[1];
    corners = {low, {high.x, low.y}, high, {low.x, high.y}};
  }
  // Three rows of four: from the world into the block when it was cut, then from the world to the plane of the outline.
  const std::vector<double> numbers = lens.reals(40, subclass);
  constexpr std::size_t ofMatrix = 12;
  if (corners.size() < 3 || numbers.size() < 2 * ofMatrix) return;
  // A depth in front may come before the matrices, under the same code.
  const std::size_t first = numbers.size() - 2 * ofMatrix;
  const auto matrixAt = [&](std::size_t at) {
    const auto n = [&](std::size_t i) { return numbers[at + i]; };
    return Transform{{n(0), n(4), n(8)}, {n(1), n(5), n(9)}, {n(2), n(6), n(10)}, {n(3), n(7), n(11)}};
  };
  const Transform toBlock = matrixAt(first);
  const Transform toOutline = matrixAt(first + ofMatrix);
  // Without a stretch in it, the way back is along the same axes.
  const auto back = [&](Vector2 corner) {
    const Vector3 arm{corner.x - toOutline.origin.x, corner.y - toOutline.origin.y, -toOutline.origin.z};
    const Vector3 row1{toOutline.x.x, toOutline.y.x, toOutline.z.x};
    const Vector3 row2{toOutline.x.y, toOutline.y.y, toOutline.z.y};
    const Vector3 row3{toOutline.x.z, toOutline.y.z, toOutline.z.z};
    return arm.x * row1 + arm.y * row2 + arm.z * row3;
  };
  std::vector<Vector2> outline;
  for (const Vector2 corner : corners)
    outline.push_back(place.toSpace().flat(toWorld.at(toBlock.at(back(corner)))));
  inner.clip = painter.canvas().addClip(std::move(outline), inner.clip);
}

std::size_t repeated(const Lens& entity, int code) {
  return static_cast<std::size_t>(
      std::clamp<std::int64_t>(entity.integer(code, dxf::anySubclass, 1), 1, 1'000'000));
}

}  // namespace

void drawInsert(Painter& painter, const Lens& entity, const Place& place) {
  const auto real = [&](int code, double otherwise) {
    return entity.real(code, dxf::anySubclass, otherwise);
  };
  const Vector3 scale{real(41, 1), real(42, 1), real(43, 1)};
  const bool isSeen = std::abs(scale.x) > 0 && std::abs(scale.y) > 0;
  const std::wstring name = entity.name(2, dxf::anySubclass);
  const Transform grid = Transform::ofFrame(automation::frameOf(entity, dxf::anySubclass))
                             .after(Transform::moved(pointAt(entity, 10, dxf::anySubclass)))
                             .after(Transform::rotated(automation::radians(real(50, 0))));
  const std::size_t columns = repeated(entity, 70);
  const std::size_t rows = repeated(entity, 71);
  for (std::size_t row = 0; isSeen && row < rows; ++row) {
    for (std::size_t column = 0; column < columns && !painter.canvas().isFull(); ++column) {
      const Vector3 step{static_cast<double>(column) * real(44, 0), static_cast<double>(row) * real(45, 0),
                         0};
      const Transform toWorld = grid.after(Transform::moved(step)).after(Transform::scaled(scale));
      Surroundings inner = Painter::inside(place, toWorld);
      clipAsTold(painter, place, toWorld, inner);
      painter.drawBlock(name, inner);
    }
  }
  // Attributes lie in the world, not in the block.
  Surroundings beside = place.around;
  beside.entity = place.entity;
  const database::RecordRange members = painter.drawing().members(place.record);
  for (std::uint32_t record = members.first; record < members.first + members.count; ++record)
    painter.drawMember(record, beside);
}

void drawDimension(Painter& painter, const Lens& entity, const Place& place) {
  painter.drawBlock(entity.name(2, "AcDbDimension"), Painter::inside(place, {}));
}

void drawTable(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbBlockReference";
  const Vector3 along = pointAt(entity, 11, "AcDbTable", {1, 0, 0});
  const Transform toWorld =
      Transform::moved(pointAt(entity, 10, subclass)).after(Transform::rotated(std::atan2(along.y, along.x)));
  painter.drawBlock(entity.name(2, subclass), Painter::inside(place, toWorld));
}

}  // namespace velt::view::entities
