#pragma once

// Fills a picture: takes shapes in the coordinates of the space that is drawn.

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "view/Draw.h"
#include "view/Flatten.h"
#include "view/Picture.h"

namespace velt::view {

// A line from point to point.
struct Outline {
  std::vector<Vector2> points{};
  bool isClosed = false;
};

// How something is drawn, and for whom.
struct Pen {
  Ink ink{};
  float lineweight = 0;
  float opacity = 1;
  double width = 0;
  std::uint32_t dashes = none;
  std::uint32_t entity = none;
  std::uint32_t viewport = none;
  std::uint32_t clip = none;
  // It goes on beyond what is seen, and says nothing of where the drawing ends.
  bool isEndless = false;
};

// Points that are not finite, or too far away for any picture, are left out, and so is what lies outside of the clip or
// the window.
class Canvas {
 public:
  explicit Canvas(const DrawOptions& options) : options_(options) {}

  [[nodiscard]] const DrawOptions& options() const { return options_; }
  // Of curves.
  [[nodiscard]] Tolerance tolerance() const;
  // How many pixels long something is; 0 when nobody knows.
  [[nodiscard]] double pixels(double length) const { return length * options_.scale; }
  // What is seen within a clip, if it is known.
  [[nodiscard]] std::optional<Box> sight(std::uint32_t clip) const;
  // The limits are reached: nothing more is taken.
  [[nodiscard]] bool isFull() const { return picture_.isCutShort; }
  void setFull() { picture_.isCutShort = true; }

  void path(const Pen& pen, std::span<const Outline> outlines);
  void path(const Pen& pen, std::span<const Vector2> points, bool isClosed = false);
  void fill(const Pen& pen, std::span<const Outline> outlines);
  void text(const Pen& pen, Text text);

  [[nodiscard]] std::uint32_t addClip(std::vector<Vector2> outline, std::uint32_t outer);
  // Lengths of at least two parts, in the units of the space.
  [[nodiscard]] std::uint32_t addDashes(const std::vector<double>& lengths);

  [[nodiscard]] Picture take() { return std::move(picture_); }

 private:
  [[nodiscard]] std::uint32_t nextPart() const;
  void addPath(const Pen& pen, std::uint32_t firstPart);
  void addPart(std::span<const Vector2> points, bool isClosed, bool isArea);
  void add(Primitive primitive, const Pen& pen);
  [[nodiscard]] Box boxOfParts(std::uint32_t first) const;

  DrawOptions options_;
  Picture picture_;
  std::map<std::vector<double>, std::uint32_t> dashes_;
};

}  // namespace velt::view
