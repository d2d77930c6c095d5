#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "view/Letters.h"
#include "view/entities/Entities.h"
#include "view/entities/LetterDrawer.h"

namespace velt::view::entities {
namespace {

using automation::pointAt;

struct PixelFrame {
  Vector3 origin{};
  Vector3 across{};
  Vector3 up{};
  double width = 0;
  double height = 0;

  [[nodiscard]] Vector3 at(double x, double y) const { return origin + x * across + y * up; }
};

PixelFrame pixelFrameOf(const Lens& image) {
  const Vector3 size = pointAt(image, 13, dxf::anySubclass, {1, 1, 0});
  return {pointAt(image, 10, dxf::anySubclass), pointAt(image, 11, dxf::anySubclass, {1, 0, 0}),
          pointAt(image, 12, dxf::anySubclass, {0, 1, 0}), size.x, size.y};
}

// The outline that is seen: the corners of the picture, or those that it is cut off at. These count from the middle of
// the upper left pixel downwards.
std::vector<Vector2> outlineOf(const Lens& image, const PixelFrame& frame, const Place& place) {
  constexpr std::int64_t isShownClipped = 4;
  std::vector<Vector2> corners;
  const bool isClipped = image.integer(280, dxf::anySubclass, 0) != 0
                         && (image.integer(70, dxf::anySubclass, isShownClipped) & isShownClipped) != 0;
  if (isClipped || image.type() == "WIPEOUT") {
    for (const database::Point& point : image.points(14, dxf::anySubclass))
      corners.push_back({point[0] + 0.5, frame.height - point[1] - 0.5});
  }
  if (corners.size() == 2)
    corners = {corners[0], {corners[1].x, corners[0].y}, corners[1], {corners[0].x, corners[1].y}};
  if (corners.size() < 3)
    corners = {{0, 0}, {frame.width, 0}, {frame.width, frame.height}, {0, frame.height}};
  for (Vector2& corner : corners)
    corner = place.toSpace().flat(frame.at(corner.x, corner.y));
  return corners;
}

// Without the folders that it stood in on another machine.
std::wstring fileOf(const Painter& painter, std::uint64_t definition) {
  const auto record = painter.drawing().recordByHandle(definition);
  if (!record) return {};
  std::wstring file = Lens(painter.drawing(), *record).name(1, dxf::anySubclass);
  const std::size_t folder = file.find_last_of(L"\\/");
  return folder != std::wstring::npos ? file.substr(folder + 1) : file;
}

// In the middle of the frame, as large as fits, and nowhere else.
void drawName(Painter& painter, const Place& place, const Transform& plane, const std::wstring& name,
              double width, double height, const std::vector<Vector2>& outline) {
  const double natural = lengthOf(name);
  if (name.empty() || !(natural > 0) || !(width > 0) || !(height > 0)) return;
  const double size = std::min(0.8 * width / natural, 0.2 * height);
  const Transform middle = plane.after(Transform::moved({width / 2, (height - size) / 2, 0}));
  Pen pen = painter.pen(place);
  pen.clip = painter.canvas().addClip(outline, place.around.clip);
  drawLetters(painter, pen, middle, name, {.height = size}, 0.5);
}

}  // namespace

void drawImage(Painter& painter, const Lens& entity, const Place& place) {
  const PixelFrame frame = pixelFrameOf(entity);
  const std::vector<Vector2> outline = outlineOf(entity, frame, place);
  painter.canvas().path(painter.pen(place), outline, true);
  const Vector3 across = direction(frame.across, {1, 0, 0});
  const Vector3 up = direction(frame.up, {0, 1, 0});
  drawName(painter, place, place.toSpace().after({across, up, cross(across, up), frame.origin}),
           fileOf(painter, entity.handle(340, dxf::anySubclass)), frame.width * length(frame.across),
           frame.height * length(frame.up), outline);
}

void drawWipeout(Painter& painter, const Lens& entity, const Place& place) {
  const PixelFrame frame = pixelFrameOf(entity);
  const Outline area{outlineOf(entity, frame, place), true};
  Pen pen = painter.pen(place);
  pen.ink = {Ink::Kind::Background, 0, 0, 0};
  painter.canvas().fill(pen, std::span(&area, 1));
}

void drawUnderlay(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbUnderlayReference";
  const Vector3 scale{entity.real(41, subclass, 1), entity.real(42, subclass, 1),
                      entity.real(43, subclass, 1)};
  const Transform plane = place.toSpace()
                              .after(Transform::ofFrame(automation::frameOf(entity, subclass)))
                              .after(Transform::moved(pointAt(entity, 10, subclass)))
                              .after(Transform::rotated(automation::radians(entity.real(50, subclass, 0))))
                              .after(Transform::scaled(scale));
  Box box;
  std::vector<Vector2> corners;
  for (const database::Point& point : entity.points(11, subclass)) {
    corners.push_back({point[0], point[1]});
    box.include(corners.back());
  }
  // How large the page is stands in its file; without a frame of its own the picture shows a square unit for it.
  if (corners.empty()) {
    box.include(Vector2{0, 0});
    box.include(Vector2{1, 1});
  }
  if (corners.size() < 3) corners = {box.low, {box.high.x, box.low.y}, box.high, {box.low.x, box.high.y}};
  std::vector<Vector2> outline;
  for (const Vector2 corner : corners)
    outline.push_back(plane.flat({corner.x, corner.y, 0}));
  painter.canvas().path(painter.pen(place), outline, true);
  drawName(painter, place, plane.after(Transform::moved({box.low.x, box.low.y, 0})),
           fileOf(painter, entity.handle(340, subclass)), box.high.x - box.low.x, box.high.y - box.low.y,
           outline);
}

void drawOleFrame(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbOle2Frame";
  const Vector3 a = pointAt(entity, 10, subclass);
  const Vector3 b = pointAt(entity, 11, subclass);
  const std::array<Vector2, 4> corners = {place.toSpace().flat(a), place.toSpace().flat({b.x, a.y, a.z}),
                                          place.toSpace().flat(b), place.toSpace().flat({a.x, b.y, b.z})};
  painter.canvas().path(painter.pen(place), corners, true);
}

}  // namespace velt::view::entities
