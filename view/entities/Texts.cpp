#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>

#include "dxf/TextCodes.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "view/FormattedText.h"
#include "view/Letters.h"
#include "view/TextStyles.h"
#include "view/entities/Entities.h"
#include "view/entities/LetterDrawer.h"

namespace velt::view::entities {
namespace {

using automation::pointAt;
using automation::radians;

constexpr std::string_view single = "AcDbText";
constexpr std::string_view multi = "AcDbMText";

// What the drawing stores for where a single line hangs.
enum Across : std::int64_t { Left = 0, Center = 1, Right = 2, Aligned = 3, Middle = 4, Fit = 5 };

// How far the baseline lies above the point on which the text hangs, in heights of its letters.
double baselineOf(std::int64_t across, std::int64_t up) {
  if (across == Middle) return -0.5;
  switch (up) {
    case 1:
      return 0.25;
    case 2:
      return -0.5;
    case 3:
      return -1;
    default:
      return 0;
  }
}

double anchorOf(std::int64_t across) {
  switch (across) {
    case Center:
    case Middle:
      return 0.5;
    case Right:
      return 1;
    default:
      return 0;
  }
}

// `up`: how its letters stand against the point, which attributes store under another code.
void drawSingleLine(Painter& painter, const Lens& entity, const Place& place, const std::wstring& stored,
                    std::int64_t up) {
  std::wstring wording = dxf::decodePercentCodes(dxf::decodeCaretCodes(stored));
  std::replace_if(
      wording.begin(), wording.end(), [](wchar_t letter) { return letter < L' '; }, L' ');
  const TextStyle style = textStyleNamed(painter.drawing(), entity.name(7, single, L"Standard"));
  TextFormat format{.height = entity.real(40, single, 1),
                    .widthFactor = entity.real(41, single, 1),
                    .oblique = entity.has(51, single) ? radians(entity.real(51, single, 0)) : style.oblique,
                    .family = style.family,
                    .isBold = style.isBold,
                    .isItalic = style.isItalic};
  if (!entity.has(41, single)) format.widthFactor = style.widthFactor;

  const std::int64_t across = entity.integer(72, single, Left);
  const bool isBetween = across == Aligned || across == Fit;
  const bool hangsOnSecond = (across != Left || up != 0) && !isBetween && entity.has(11, single);
  const Vector3 first = pointAt(entity, 10, single);
  const Vector3 second = pointAt(entity, 11, single, first);
  double rotation = radians(entity.real(50, single, 0));
  if (isBetween) {
    const Vector2 along{second.x - first.x, second.y - first.y};
    const double natural = lengthOf(wording) * format.height;
    if (length(along) > 0 && natural > 0) {
      rotation = std::atan2(along.y, along.x);
      format.widthFactor = length(along) / natural;
    }
  }
  // Backwards, or upside down.
  const std::int64_t mirrored = entity.integer(71, single, 0);
  const Vector3 turned{(mirrored & 2) != 0 ? -1.0 : 1.0, (mirrored & 4) != 0 ? -1.0 : 1.0, 1};
  const Transform plane = place.toSpace()
                              .after(Transform::ofFrame(automation::frameOf(entity, single)))
                              .after(Transform::moved(hangsOnSecond ? second : first))
                              .after(Transform::rotated(rotation))
                              .after(Transform::scaled(turned))
                              .after(Transform::moved({0, baselineOf(across, up) * format.height, 0}));
  drawLetters(painter, painter.pen(place), plane, wording, format, anchorOf(across));
}

// Long texts stand in pieces, which may end within a character.
std::wstring contentsOf(const Lens& entity) {
  std::string bytes;
  const dxf::RecordView& view = entity.view();
  view.visit(multi, [&](std::size_t index) {
    if (view.code(index) == 3 || view.code(index) == 1) bytes += view.value(index);
    return true;
  });
  return entity.drawing().decode(bytes);
}

// Of an angle and a direction, the one that is stored later counts.
Vector3 directionOf(const Lens& entity, const automation::ObjectFrame& frame) {
  const auto angle = entity.find(50, multi);
  const auto stored = entity.find(11, multi);
  if (stored && (!angle || *angle < *stored)) {
    const Vector3 along = pointAt(entity, 11, multi);
    if (length(along) > 0) return direction(along, {1, 0, 0});
  }
  // It reads along the x axis of the world where nothing is told, from whichever side it is seen.
  if (!angle && length(cross(frame.normal(), Vector3{1, 0, 0})) > 0) return {1, 0, 0};
  const double rotation = radians(entity.real(50, multi, 0));
  return frame.toWorld({std::cos(rotation), std::sin(rotation), 0});
}

// What lies behind the text, and a little beside it, is covered.
void drawBackground(Painter& painter, const Lens& entity, const Place& place, const Transform& plane,
                    const LaidOutText& text, double height) {
  constexpr std::int64_t withColor = 1;
  constexpr std::int64_t withBackground = 2;
  const std::int64_t fill = entity.integer(90, multi, 0);
  if ((fill & (withColor | withBackground)) == 0 || text.texts.empty()) return;
  Pen pen = painter.pen(place);
  const bool isColor = (fill & withBackground) == 0;
  pen.ink = isColor ? painter.appearance().inkOf(entity.integer(63, multi, 256), place.look)
                    : Ink{Ink::Kind::Background, 0, 0, 0};
  const double margin = std::max(0.0, entity.real(45, multi, 1.5) - 1) * height;
  const Vector2 low = text.box.low - Vector2{margin, margin};
  const Vector2 high = text.box.high + Vector2{margin, margin};
  Outline area{{}, true};
  for (const Vector2 corner : {low, Vector2{high.x, low.y}, high, Vector2{low.x, high.y}})
    area.points.push_back(plane.flat({corner.x, corner.y, 0}));
  painter.canvas().fill(pen, std::span(&area, 1));
}

}  // namespace

void drawText(Painter& painter, const Lens& entity, const Place& place) {
  drawSingleLine(painter, entity, place, entity.text(1, single), entity.integer(73, single, 0));
}

void drawAttribute(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::int64_t invisible = 1;
  if ((entity.integer(70, "AcDbAttribute", 0) & invisible) != 0) return;
  drawSingleLine(painter, entity, place, entity.text(1, single), entity.integer(74, dxf::anySubclass, 0));
}

void drawAttributeDefinition(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbAttributeDefinition";
  constexpr std::int64_t invisible = 1;
  constexpr std::int64_t constant = 2;
  const std::int64_t flags = entity.integer(70, subclass, 0);
  const bool isInBlock = place.around.block != nullptr;
  if (isInBlock && ((flags & constant) == 0 || (flags & invisible) != 0)) return;
  const std::wstring wording = isInBlock ? entity.text(1, single) : entity.text(2, subclass);
  drawSingleLine(painter, entity, place, wording, entity.integer(74, dxf::anySubclass, 0));
}

void drawMText(Painter& painter, const Lens& entity, const Place& place) {
  const TextStyle style = textStyleNamed(painter.drawing(), entity.name(7, multi, L"Standard"));
  TextLayout layout{.format = {.height = entity.real(40, multi, 1),
                               .widthFactor = style.widthFactor,
                               .oblique = style.oblique,
                               .family = style.family,
                               .isBold = style.isBold,
                               .isItalic = style.isItalic}};
  if (!(layout.format.height > 0)) return;
  layout.width = std::max(0.0, entity.real(41, multi, 0));
  const double spacing = entity.real(44, multi, 1);
  if (spacing > 0) layout.spacing = spacing;
  // From the top left to the bottom right, row by row.
  const std::int64_t attachment = std::clamp<std::int64_t>(entity.integer(71, multi, 1), 1, 9) - 1;
  layout.across = static_cast<double>(attachment % 3) / 2;
  layout.down = static_cast<double>(attachment / 3) / 2;

  const automation::ObjectFrame frame = automation::frameOf(entity, multi);
  const Vector3 along = directionOf(entity, frame);
  const Vector3 up = direction(cross(frame.normal(), along), {0, 1, 0});
  const Transform plane = place.toSpace().after({along, up, frame.normal(), pointAt(entity, 10, multi)});
  const LaidOutText text = layOut(contentsOf(entity), layout);
  drawBackground(painter, entity, place, plane, text, layout.format.height);
  drawFormatted(painter, painter.pen(place), plane, text);
}

}  // namespace velt::view::entities
