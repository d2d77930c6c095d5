#pragma once

// Paints the picture of a drawing with Qt.

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <cstdint>
#include <span>
#include <unordered_set>

#include "view/Picture.h"
#include "view/SpatialIndex.h"

class QPainter;

namespace velt::desktop {

// Which part of a space is seen, and how large.
struct Sight {
  view::Vector2 center{};
  // Pixels for a unit of the space.
  double scale = 1;
  QSize size{};

  [[nodiscard]] QPointF pixel(view::Vector2 point) const {
    return {(point.x - center.x) * scale + size.width() / 2.0,
            (center.y - point.y) * scale + size.height() / 2.0};
  }
  [[nodiscard]] view::Vector2 point(QPointF pixel) const {
    return {center.x + (pixel.x() - size.width() / 2.0) / scale,
            center.y - (pixel.y() - size.height() / 2.0) / scale};
  }
  [[nodiscard]] view::Box box() const {
    view::Box box;
    box.include(point({0, 0}));
    box.include(point(QPointF(size.width(), size.height())));
    return box;
  }

  friend bool operator==(const Sight& a, const Sight& b) {
    return a.center.x == b.center.x && a.center.y == b.center.y && a.scale == b.scale && a.size == b.size;
  }
};

using Records = std::unordered_set<std::uint32_t>;

struct PaintOptions {
  bool isDark = true;
  // In a color of their own.
  Records highlighted{};
  // Pale: what cannot be edited.
  Records dimmed{};
};

[[nodiscard]] QColor backgroundOf(bool isDark);

// What is seen of the picture, on its background.
void paintPicture(QPainter& painter, const view::Picture& picture, const view::SpatialIndex& index,
                  const Sight& sight, const PaintOptions& options);

// These primitives once more, as if they were highlighted, on what is there already.
void paintOnTop(QPainter& painter, const view::Picture& picture, std::span<const std::uint32_t> primitives,
                const Sight& sight, bool isDark);

}  // namespace velt::desktop
