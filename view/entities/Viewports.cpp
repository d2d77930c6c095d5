#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "view/entities/Entities.h"

namespace velt::view::entities {
namespace {

using automation::pointAt;

constexpr std::string_view viewportSubclass = "AcDbViewport";

// A window on the sheet, and what of model space is seen through it.
struct Window {
  Vector3 center{};
  double width = 0;
  double height = 0;
  // In model space.
  Vector3 target{};
  Vector3 towardsViewer{0, 0, 1};
  Vector2 viewCenter{};
  double viewHeight = 0;
  // In radians, how far the view is turned.
  double twist = 0;

  [[nodiscard]] std::vector<Vector2> outline(const Transform& toSpace) const {
    std::vector<Vector2> corners;
    for (const auto& [x, y] : {std::pair(-1, -1), std::pair(1, -1), std::pair(1, 1), std::pair(-1, 1)})
      corners.push_back(toSpace.flat(center + Vector3{x * width / 2, y * height / 2, 0}));
    return corners;
  }
  [[nodiscard]] Transform fromModel() const {
    const double scale = height / viewHeight;
    return Transform::moved(center)
        .after(Transform::scaled({scale, scale, scale}))
        .after(Transform::moved({-viewCenter.x, -viewCenter.y, 0}))
        .after(Transform::rotated(twist))
        .after(Transform::toFrame(automation::ObjectFrame(towardsViewer)))
        .after(Transform::moved(-1.0 * target));
  }
};

Window windowOf(const Lens& viewport) {
  Window window;
  window.center = pointAt(viewport, 10, viewportSubclass);
  window.width = viewport.real(40, viewportSubclass, 0);
  window.height = viewport.real(41, viewportSubclass, 0);
  window.target = pointAt(viewport, 17, viewportSubclass);
  window.towardsViewer = pointAt(viewport, 16, viewportSubclass, {0, 0, 1});
  const Vector3 viewCenter = pointAt(viewport, 12, viewportSubclass);
  window.viewCenter = {viewCenter.x, viewCenter.y};
  window.viewHeight = viewport.real(45, viewportSubclass, 0);
  window.twist = automation::radians(viewport.real(51, viewportSubclass, 0));
  return window;
}

// Old drawings keep the view in extended data, as numbers and points in a fixed order.
void readOldView(const Lens& viewport, Window& window) {
  const auto data = viewport.xdata("ACAD");
  if (!data) return;
  std::vector<double> numbers;
  std::vector<Vector3> points;
  const dxf::RecordView& view = viewport.view();
  for (std::size_t index = data->first; index < data->first + data->count; ++index) {
    const int code = view.code(index);
    const double number = code >= 1010 && code < 1060 ? dxf::parseReal(view.value(index)).value_or(0) : 0;
    if (code == 1010) points.push_back({number, 0, 0});
    if (code == 1020 && !points.empty()) points.back().y = number;
    if (code == 1030 && !points.empty()) points.back().z = number;
    if (code == 1040) numbers.push_back(number);
  }
  // Twist, height, and the two coordinates of the center.
  constexpr std::size_t needed = 4;
  if (points.size() < 2 || numbers.size() < needed) return;
  window.target = points[0];
  window.towardsViewer = points[1];
  window.twist = automation::radians(numbers[0]);
  window.viewHeight = numbers[1];
  window.viewCenter = {numbers[2], numbers[3]};
}

HiddenLayers hiddenLayersOf(const Painter& painter, const Lens& viewport) {
  HiddenLayers hidden;
  const dxf::RecordView& view = viewport.view();
  view.visit(viewportSubclass, [&](std::size_t index) {
    if (view.code(index) != 331 && view.code(index) != 341) return true;
    const auto record = painter.drawing().recordByHandle(dxf::parseHandle(view.value(index)).value_or(0));
    const database::TableEntry* const layer = record ? painter.drawing().layers().ofRecord(*record) : nullptr;
    if (layer != nullptr) hidden.insert(painter.drawing().layers().indexOf(*layer));
    return true;
  });
  return hidden;
}

// A window that is not a rectangle has the outline of another entity of the sheet.
std::vector<Vector2> outlineOf(Painter& painter, const Lens& viewport, const Window& window,
                               const Place& place) {
  std::vector<Vector2> outline = window.outline(place.toSpace());
  const auto record = painter.drawing().recordByHandle(viewport.handle(340, viewportSubclass));
  if (!record) return outline;
  const Lens shape(painter.drawing(), *record);
  std::vector<Vector2> corners;
  if (shape.type() == "LWPOLYLINE") {
    for (const database::Point& point : shape.points(10, "AcDbPolyline"))
      corners.push_back(place.toSpace().flat({point[0], point[1], 0}));
  } else if (shape.type() == "CIRCLE") {
    const Vector2 center = place.toSpace().flat(pointAt(shape, 10, "AcDbCircle"));
    const double radius = shape.real(40, "AcDbCircle", 0) * place.toSpace().scale();
    appendArc(corners, {center, {radius, 0}, {0, radius}, 0, automation::fullTurn},
              painter.canvas().tolerance());
  }
  return corners.size() > 2 ? corners : outline;
}

bool sameLinetypeScaleInAllViewports(const database::Drawing& drawing) {
  const auto value = drawing.document().headerValue("$PSLTSCALE", 70);
  return !value || dxf::parseInteger<int>(*value).value_or(1) != 0;
}

}  // namespace

void drawViewport(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::int64_t isTheSheet = 1;
  constexpr std::int64_t switchedOff = 0x20000;
  // Only sheets have windows on model space, and none of them is seen through another.
  if (!place.around.isPaper || place.around.viewport != none || place.around.block != nullptr) return;
  if (entity.integer(69, viewportSubclass, 0) == isTheSheet) return;
  Window window = windowOf(entity);
  if (!(window.viewHeight > 0)) readOldView(entity, window);
  if (!(window.width > 0) || !(window.height > 0)) return;
  const std::vector<Vector2> outline = outlineOf(painter, entity, window, place);
  const bool isOn = entity.integer(68, viewportSubclass, 1) != 0
                    && (entity.integer(90, viewportSubclass, 0) & switchedOff) == 0;
  if (isOn && window.viewHeight > 0) {
    const HiddenLayers hidden = hiddenLayersOf(painter, entity);
    Surroundings around;
    around.toSpace = place.toSpace().after(window.fromModel());
    around.hiddenLayers = &hidden;
    around.viewport = place.record;
    around.clip = painter.canvas().addClip(outline, place.around.clip);
    if (!sameLinetypeScaleInAllViewports(painter.drawing())) around.dashScale = around.toSpace.scale();
    painter.drawSpace(painter.contents().ofModelSpace(), around);
  }
  // A layer that is off hides the frame alone.
  if (!place.look.isOff) painter.canvas().path(painter.pen(place), outline, true);
}

}  // namespace velt::view::entities
