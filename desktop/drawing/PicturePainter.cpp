#include "desktop/drawing/PicturePainter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>
#include <vector>

#include "view/Letters.h"
#include "view/LinePieces.h"

namespace velt::desktop {

namespace {

using view::Ink;
using view::Primitive;

constexpr double pixelsPerMillimetre = 96 / 25.4;
// Wider pens are refused.
constexpr double widestPen = 32767;
// What is smaller is a dot to the eye.
constexpr double smallest = 1.5;

class PicturePainter {
 public:
  PicturePainter(QPainter& painter, const view::Picture& picture, const Sight& sight,
                 const PaintOptions& options)
      : painter_(painter), picture_(picture), sight_(sight), options_(options) {}

  void paint(std::span<const std::uint32_t> seen) {
    // What is selected lies on top, so that nothing hides it.
    std::vector<std::uint32_t> onTop;
    for (const std::uint32_t index : seen) {
      const Primitive& primitive = picture_.primitives[index];
      if (options_.highlighted.contains(primitive.entity)) {
        onTop.push_back(index);
      } else {
        paint(primitive, false);
      }
    }
    for (const std::uint32_t index : onTop)
      paint(picture_.primitives[index], true);
  }

 private:
  [[nodiscard]] QColor colorOf(const Primitive& primitive, bool isHighlighted) const {
    if (isHighlighted && primitive.ink.kind != Ink::Kind::Background)
      return options_.isDark ? QColor(0xFF, 0xA6, 0x30) : QColor(0xE8, 0x59, 0x0C);
    QColor color;
    switch (primitive.ink.kind) {
      case Ink::Kind::Foreground:
        color = options_.isDark ? Qt::white : Qt::black;
        break;
      case Ink::Kind::Background:
        color = backgroundOf(options_.isDark);
        break;
      default:
        color = QColor(primitive.ink.red, primitive.ink.green, primitive.ink.blue);
    }
    constexpr float pale = 0.4F;
    color.setAlphaF(primitive.opacity * (options_.dimmed.contains(primitive.entity) ? pale : 1.0F));
    return color;
  }

  void setClip(std::uint32_t clip) {
    if (clip == clip_) return;
    clip_ = clip;
    painter_.setClipping(false);
    for (; clip != view::none; clip = picture_.clips[clip].outer) {
      QPainterPath outline;
      outline.addPolygon(pixels(picture_.clips[clip].outline));
      painter_.setClipPath(outline, painter_.hasClipping() ? Qt::IntersectClip : Qt::ReplaceClip);
    }
  }

  [[nodiscard]] QPolygonF pixels(std::span<const view::Vector2> points) const {
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(points.size()));
    for (const view::Vector2& point : points)
      polygon.append(sight_.pixel(point));
    return polygon;
  }
  [[nodiscard]] std::span<const view::Vector2> pointsOf(const view::Part& part) const {
    return std::span(picture_.points).subspan(part.firstPoint, part.pointCount);
  }
  [[nodiscard]] std::span<const view::Part> partsOf(const Primitive& primitive) const {
    return std::span(picture_.parts).subspan(primitive.first, primitive.count);
  }

  void paint(const Primitive& primitive, bool isHighlighted) {
    setClip(primitive.clip);
    const QColor color = colorOf(primitive, isHighlighted);
    if (primitive.box.size() * sight_.scale < smallest) {
      painter_.setPen(color);
      painter_.drawPoint(sight_.pixel(primitive.box.low));
      return;
    }
    switch (primitive.shape) {
      case view::Shape::Path:
        return paintPath(primitive, color, isHighlighted);
      case view::Shape::Fill:
        return paintFill(primitive, color, isHighlighted);
      case view::Shape::Text:
        return paintText(picture_.texts[primitive.first], color);
    }
  }

  void paintPath(const Primitive& primitive, const QColor& color, bool isHighlighted) {
    double width =
        primitive.width > 0 ? primitive.width * sight_.scale : primitive.lineweight * pixelsPerMillimetre;
    if (isHighlighted) width = std::max(width, 1.0) + 1;
    QPen pen(color);
    // A pen without a width is a pixel wide, and much faster.
    pen.setWidthF(width > 1.5 ? std::min(width, widestPen) : 0);
    if (primitive.width > 0) {
      pen.setCapStyle(Qt::FlatCap);
      pen.setJoinStyle(Qt::MiterJoin);
    }
    painter_.setBrush(Qt::NoBrush);
    if (primitive.dashes != view::none && setDashes(pen, picture_.dashes[primitive.dashes]))
      return paintDashed(primitive, pen);
    painter_.setPen(pen);
    for (const view::Part& part : partsOf(primitive)) {
      const QPolygonF polygon = pixels(pointsOf(part));
      if (polygon.size() == 1) {
        painter_.drawPoint(polygon.front());
      } else if (part.isClosed) {
        painter_.drawPolygon(polygon);
      } else {
        painter_.drawPolyline(polygon);
      }
    }
  }

  // False for dashes that nobody can tell apart, which would cost a line each.
  [[nodiscard]] bool setDashes(QPen& pen, const std::vector<double>& lengths) const {
    constexpr double leastPeriod = 3;
    double period = 0;
    for (const double length : lengths)
      period += length * sight_.scale;
    if (period < leastPeriod) return false;
    QList<qreal> pattern;
    for (const double length : lengths)
      pattern.append(std::max(length * sight_.scale, 1.0) / unitOf(pen));
    pen.setDashPattern(pattern);
    pen.setCapStyle(Qt::FlatCap);
    return true;
  }

  // Of its dashes: its width, and at least a pixel.
  [[nodiscard]] static double unitOf(const QPen& pen) { return std::max(pen.widthF(), 1.0); }

  // What is out of sight would be dashed as well, however long it is.
  void paintDashed(const Primitive& primitive, QPen& pen) {
    const double unit = unitOf(pen);
    const QList<qreal> pattern = pen.dashPattern();
    const double period = std::accumulate(pattern.begin(), pattern.end(), 0.0);
    const view::Box seen = sight_.box().grown(2 * unit / sight_.scale);
    for (const view::Part& part : partsOf(primitive)) {
      if (part.pointCount == 1) painter_.drawPoint(sight_.pixel(pointsOf(part).front()));
      for (const view::LinePiece& piece : view::piecesWithin(pointsOf(part), part.isClosed, seen)) {
        pen.setDashOffset(std::fmod(piece.start * sight_.scale / unit, period));
        painter_.setPen(pen);
        painter_.drawPolyline(pixels(piece.points));
      }
    }
  }

  void paintFill(const Primitive& primitive, QColor color, bool isHighlighted) {
    QPainterPath area;
    area.setFillRule(Qt::OddEvenFill);
    for (const view::Part& part : partsOf(primitive)) {
      area.addPolygon(pixels(pointsOf(part)));
      area.closeSubpath();
    }
    constexpr float letsOthersBeSeen = 0.6F;
    if (isHighlighted) color.setAlphaF(letsOthersBeSeen);
    painter_.fillPath(area, color);
  }

  void paintText(const view::Text& text, const QColor& color) {
    const double capitals = length(text.up) * sight_.scale;
    constexpr double leastReadable = 2;
    if (capitals < leastReadable) return paintBar(text, color);
    // In a size that fonts are made for; the rest is done by the transformation.
    constexpr int fontSize = 32;
    QFont font(text.fontFamily.empty() ? QString("Liberation Sans")
                                       : QString::fromStdWString(text.fontFamily));
    font.setPixelSize(fontSize);
    font.setBold(text.isBold);
    font.setItalic(text.isItalic);
    font.setUnderline(text.isUnderlined);
    font.setOverline(text.isOverlined);
    font.setStrikeOut(text.isStruckOut);
    const QString wording = QString::fromStdWString(text.wording);
    const double advance = QFontMetricsF(font).horizontalAdvance(wording);
    if (!(advance > 0)) return;
    const double factor = 1 / (fontSize * view::capitalHeight);
    const double stretch = text.isFitted ? text.length / (advance * factor) : 1;
    const QPointF origin = sight_.pixel(text.origin);
    const QTransform letters(
        text.right.x * sight_.scale * factor * stretch, -text.right.y * sight_.scale * factor * stretch,
        -text.up.x * sight_.scale * factor, text.up.y * sight_.scale * factor, origin.x(), origin.y());
    painter_.save();
    painter_.setTransform(letters, true);
    painter_.setPen(color);
    painter_.setFont(font);
    painter_.drawText(QPointF(-text.anchor * advance, 0), wording);
    painter_.restore();
  }

  // Letters too small to be read are a line where they stand.
  void paintBar(const view::Text& text, const QColor& color) {
    const view::Vector2 start = text.origin - (text.anchor * text.length) * text.right;
    painter_.setPen(color);
    painter_.drawLine(sight_.pixel(start), sight_.pixel(start + text.length * text.right));
  }

  QPainter& painter_;
  const view::Picture& picture_;
  const Sight& sight_;
  const PaintOptions& options_;
  std::uint32_t clip_ = view::none;
};

}  // namespace

QColor backgroundOf(bool isDark) {
  return isDark ? QColor(0x21, 0x28, 0x30) : QColor(Qt::white);
}

void paintPicture(QPainter& painter, const view::Picture& picture, const view::SpatialIndex& index,
                  const Sight& sight, const PaintOptions& options) {
  painter.fillRect(QRectF(QPointF(), QSizeF(sight.size)), backgroundOf(options.isDark));
  PicturePainter(painter, picture, sight, options).paint(index.seenIn(sight.box()));
  painter.setClipping(false);
}

void paintOnTop(QPainter& painter, const view::Picture& picture, std::span<const std::uint32_t> primitives,
                const Sight& sight, bool isDark) {
  PaintOptions highlighted{.isDark = isDark};
  for (const std::uint32_t index : primitives)
    highlighted.highlighted.insert(picture.primitives[index].entity);
  PicturePainter(painter, picture, sight, highlighted).paint(primitives);
  painter.setClipping(false);
}

}  // namespace velt::desktop
