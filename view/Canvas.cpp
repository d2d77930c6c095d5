#include "view/Canvas.h"

#include <algorithm>
#include <cmath>

namespace velt::view {
namespace {

// Farther away, the digits of a double no longer tell neighboring pixels apart; nobody draws there.
constexpr double farthest = 1e13;
// Of a curve from its lines, in pixels: what nobody sees.
constexpr double strayPixels = 0.15;

bool canBeDrawn(Vector2 point) {
  return std::abs(point.x) < farthest && std::abs(point.y) < farthest;
}

Box intersection(const Box& a, const Box& b) {
  return {{std::max(a.low.x, b.low.x), std::max(a.low.y, b.low.y)},
          {std::min(a.high.x, b.high.x), std::min(a.high.y, b.high.y)}};
}

}  // namespace

Tolerance Canvas::tolerance() const {
  return {options_.scale > 0 ? strayPixels / options_.scale : 0};
}

std::optional<Box> Canvas::sight(std::uint32_t clip) const {
  if (clip == none) return options_.window;
  const Box& box = picture_.clips[clip].box;
  return options_.window ? intersection(box, *options_.window) : box;
}

void Canvas::addPart(std::span<const Vector2> points, bool isClosed, bool isArea) {
  const std::size_t fewest = isArea ? 3 : 1;
  auto start = static_cast<std::uint32_t>(picture_.points.size());
  bool isWhole = true;
  const auto finish = [&](bool closes) {
    const auto end = static_cast<std::uint32_t>(picture_.points.size());
    if (end - start >= fewest) {
      picture_.parts.push_back({start, end - start, closes});
    } else {
      picture_.points.resize(start);
    }
    start = static_cast<std::uint32_t>(picture_.points.size());
  };
  for (const Vector2& point : points) {
    if (canBeDrawn(point)) {
      picture_.points.push_back(point);
    } else {
      isWhole = false;
      // An area just loses the corner.
      if (!isArea) finish(false);
    }
  }
  finish(isArea || (isClosed && isWhole));
}

Box Canvas::boxOfParts(std::uint32_t first) const {
  Box box;
  for (std::size_t part = first; part < picture_.parts.size(); ++part) {
    const Part& of = picture_.parts[part];
    for (std::uint32_t point = of.firstPoint; point < of.firstPoint + of.pointCount; ++point)
      box.include(picture_.points[point]);
  }
  return box;
}

void Canvas::add(Primitive primitive, const Pen& pen) {
  const std::optional<Box> sight = this->sight(pen.clip);
  if (sight && !sight->meets(primitive.box)) {
    // It goes back to where it was: the last one added is the last one there.
    if (primitive.shape == Shape::Text) {
      picture_.texts.resize(primitive.first);
    } else {
      picture_.points.resize(picture_.parts[primitive.first].firstPoint);
      picture_.parts.resize(primitive.first);
    }
    return;
  }
  if (pen.clip != none) primitive.box = intersection(primitive.box, picture_.clips[pen.clip].box);
  primitive.ink = pen.ink;
  primitive.opacity = pen.opacity;
  primitive.entity = pen.entity;
  primitive.viewport = pen.viewport;
  primitive.clip = pen.clip;
  if (!pen.isEndless) picture_.extents.include(primitive.box);
  picture_.primitives.push_back(primitive);
  if (picture_.points.size() > options_.limits.points) setFull();
}

std::uint32_t Canvas::nextPart() const {
  return static_cast<std::uint32_t>(picture_.parts.size());
}

void Canvas::addPath(const Pen& pen, std::uint32_t firstPart) {
  if (nextPart() == firstPart) return;
  Primitive primitive{.shape = Shape::Path};
  primitive.first = firstPart;
  primitive.count = nextPart() - firstPart;
  primitive.box = boxOfParts(firstPart).grown(pen.width / 2);
  primitive.width = pen.width;
  primitive.lineweight = pen.lineweight;
  primitive.dashes = pen.dashes;
  add(primitive, pen);
}

void Canvas::path(const Pen& pen, std::span<const Outline> outlines) {
  if (isFull()) return;
  const std::uint32_t firstPart = nextPart();
  for (const Outline& outline : outlines)
    addPart(outline.points, outline.isClosed, false);
  addPath(pen, firstPart);
}

void Canvas::path(const Pen& pen, std::span<const Vector2> points, bool isClosed) {
  if (isFull()) return;
  const std::uint32_t firstPart = nextPart();
  addPart(points, isClosed, false);
  addPath(pen, firstPart);
}

void Canvas::fill(const Pen& pen, std::span<const Outline> outlines) {
  if (isFull()) return;
  const std::uint32_t firstPart = nextPart();
  for (const Outline& outline : outlines)
    addPart(outline.points, true, true);
  if (nextPart() == firstPart) return;
  Primitive primitive{.shape = Shape::Fill};
  primitive.first = firstPart;
  primitive.count = nextPart() - firstPart;
  primitive.box = boxOfParts(firstPart);
  add(primitive, pen);
}

void Canvas::text(const Pen& pen, Text text) {
  if (isFull() || text.wording.empty()) return;
  Primitive primitive{.count = 1, .shape = Shape::Text};
  for (const Vector2& corner : outlineOf(text)) {
    if (!canBeDrawn(corner)) return;
    primitive.box.include(corner);
  }
  primitive.first = static_cast<std::uint32_t>(picture_.texts.size());
  picture_.texts.push_back(std::move(text));
  add(primitive, pen);
}

std::uint32_t Canvas::addClip(std::vector<Vector2> outline, std::uint32_t outer) {
  Clip clip{.outer = outer};
  for (const Vector2& point : outline) {
    if (!canBeDrawn(point)) continue;
    clip.outline.push_back(point);
    clip.box.include(point);
  }
  if (outer != none) clip.box = intersection(clip.box, picture_.clips[outer].box);
  picture_.clips.push_back(std::move(clip));
  return static_cast<std::uint32_t>(picture_.clips.size() - 1);
}

std::uint32_t Canvas::addDashes(const std::vector<double>& lengths) {
  const auto [place, isNew] =
      dashes_.try_emplace(lengths, static_cast<std::uint32_t>(picture_.dashes.size()));
  if (isNew) picture_.dashes.push_back(lengths);
  return place->second;
}

}  // namespace velt::view
