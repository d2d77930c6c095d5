#include "view/entities/LetterDrawer.h"

#include <array>
#include <cmath>

#include "view/Letters.h"

namespace velt::view::entities {
namespace {

void draw(Painter& painter, Pen pen, const Transform& plane, const PlacedText& placed) {
  const TextFormat& format = placed.format;
  const double size = format.height * format.widthFactor;
  if (!(format.height > 0) || !(size > 0)) return;
  Text text{.wording = placed.wording};
  text.origin = plane.flat({placed.origin.x, placed.origin.y, 0});
  text.right = plane.flatAlong({size, 0, 0});
  text.up = plane.flatAlong({format.height * std::tan(format.oblique), format.height, 0});
  text.anchor = placed.anchor;
  text.length = placed.length / size;
  text.isBold = format.isBold;
  text.isItalic = format.isItalic;
  text.isUnderlined = format.isUnderlined;
  text.isOverlined = format.isOverlined;
  text.isStruckOut = format.isStruckOut;
  text.fontFamily = format.family;
  if (format.ink) pen.ink = *format.ink;
  painter.canvas().text(pen, std::move(text));
}

}  // namespace

void drawLetters(Painter& painter, const Pen& pen, const Transform& plane, const std::wstring& wording,
                 const TextFormat& format, double anchor) {
  draw(painter, pen, plane,
       {wording, format, {}, anchor, lengthOf(wording) * format.height * format.widthFactor});
}

void drawFormatted(Painter& painter, const Pen& pen, const Transform& plane, const LaidOutText& text) {
  for (const PlacedText& placed : text.texts)
    draw(painter, pen, plane, placed);
  for (const PlacedBar& bar : text.bars) {
    Pen own = pen;
    if (bar.ink) own.ink = *bar.ink;
    const std::array<Vector2, 2> line = {plane.flat({bar.from.x, bar.from.y, 0}),
                                         plane.flat({bar.to.x, bar.to.y, 0})};
    painter.canvas().path(own, line);
  }
}

}  // namespace velt::view::entities
