#pragma once

// What values look like, beside their names: colors, layers with their color and states, line types with their dashes,
// line weights as wide as they are.

#include <QColor>
#include <QList>
#include <QPalette>
#include <QPixmap>
#include <QString>

#include "embedded/database/Drawing.h"
#include "palette/Palette.h"
#include "view/Appearance.h"

namespace velt::desktop {

// What is to be drawn beside a value; nothing, as it begins.
struct ValuePicture {
  enum class Shape { none, square, line };

  Shape shape = Shape::none;
  // Of a square.
  QColor color{};
  // Of a line, in pixels; 0 leaves its place empty, so that the names in a list stand below each other.
  double width = 0;
  // Of a line: dashes and gaps by turns, in pixels; empty for a continuous one.
  QList<qreal> dashes{};
  // Of a layer, in words: that it is off, frozen, locked.
  QString states{};

  [[nodiscard]] bool isEmpty() const { return shape == Shape::none || (shape == Shape::line && width == 0); }
};

// Knows the layers and the line types of a drawing, as they were when it was made. The drawing must outlive it.
class ValuePictures {
 public:
  explicit ValuePictures(const database::Drawing& drawing);

  // Of the value that a row of that kind shows as that text.
  [[nodiscard]] ValuePicture of(PropertyKind::Code kind, const QString& text) const;

 private:
  [[nodiscard]] ValuePicture ofLayer(const QString& name) const;
  [[nodiscard]] ValuePicture ofLinetype(const QString& name) const;

  const database::Drawing* drawing_;
  view::Appearance appearance_;
};

// Lines have the color of texts. `ratio` is that of the device.
[[nodiscard]] QPixmap pixmapOf(const ValuePicture& picture, const QPalette& palette, qreal ratio);

}  // namespace velt::desktop
