#pragma once

// What a drawing looks like, as a list of simple things to draw: lines, filled areas and texts.
//
// Coordinates are those of the space that was drawn, in its units, y upwards. The list is in drawing order: what comes
// later covers what comes before.
// Ownership: a picture owns all that it holds. It names entities by their records, and does not look at the drawing.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "embedded/automation/geometry/Box.h"
#include "embedded/automation/geometry/Vector.h"

namespace velt::view {

using automation::Box;
using automation::Vector2;
using automation::Vector3;

// Stands for "no index" wherever one is stored.
inline constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

// What something is colored with. Foreground and background depend on what it is shown on, so the back end chooses.
struct Ink {
  enum class Kind : std::uint8_t { Color, Foreground, Background };

  Kind kind = Kind::Foreground;
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  friend constexpr bool operator==(const Ink&, const Ink&) = default;
};

// Consecutive points of the picture: a line from each to the next.
struct Part {
  std::uint32_t firstPoint = 0;
  std::uint32_t pointCount = 0;
  bool isClosed = false;
};

enum class Shape : std::uint8_t {
  // Lines along the parts. A part of a single point is a dot.
  Path,
  // What the parts enclose, each closed; what lies within an even number of them is left out.
  Fill,
  // One text.
  Text,
};

// One line of letters of the same kind.
struct Text {
  std::wstring wording{};
  // On the baseline; where it lies along the text is told by `anchor`.
  Vector2 origin{};
  // One height of capital letters along the baseline, stretched by the width factor; and one up.
  Vector2 right{};
  Vector2 up{};
  // 0: the text begins at the origin, 0.5: it is centered there, 1: it ends there.
  double anchor = 0;
  // How long it is, in multiples of `right`: estimated, since the letters depend on who shows them, unless isFitted.
  double length = 0;
  // The letters have to be stretched to that length.
  bool isFitted = false;
  bool isBold = false;
  bool isItalic = false;
  bool isUnderlined = false;
  bool isOverlined = false;
  bool isStruckOut = false;
  // Empty for any plain one.
  std::wstring fontFamily{};
};

struct Primitive {
  // Of everything that is seen of it, in the units of the space.
  Box box{};
  // Of a path: how broad its lines are, in the units of the space; 0 when the line weight says it.
  double width = 0;
  // In millimetres on paper.
  float lineweight = 0;
  // From 0, not seen, to 1.
  float opacity = 1;
  // The record of the entity of which it is seen: one of the space that was drawn, or one that a viewport shows.
  std::uint32_t entity = none;
  // The record of the viewport through which it is seen.
  std::uint32_t viewport = none;
  // Parts of the picture; of a text, its place in `texts`, and one.
  std::uint32_t first = 0;
  std::uint32_t count = 0;
  // In `dashes`, or none for a continuous line.
  std::uint32_t dashes = none;
  // In `clips`, or none.
  std::uint32_t clip = none;
  Ink ink{};
  Shape shape = Shape::Path;
};

// Where something is cut off.
struct Clip {
  std::vector<Vector2> outline{};
  Box box{};
  // What cuts this one off in turn, in `clips`, or none.
  std::uint32_t outer = none;
};

struct Picture {
  std::vector<Primitive> primitives{};
  std::vector<Part> parts{};
  std::vector<Vector2> points{};
  std::vector<Text> texts{};
  // Lengths of what is drawn and what is left out, by turns, in the units of the space.
  std::vector<std::vector<double>> dashes{};
  std::vector<Clip> clips{};
  // Of all that is seen, endless lines left out.
  Box extents{};
  // There was more than the limits let through.
  bool isCutShort = false;

  [[nodiscard]] bool isEmpty() const { return primitives.empty(); }
};

// The corners of a text, counterclockwise from the lower left one.
[[nodiscard]] inline std::vector<Vector2> outlineOf(const Text& text) {
  // Letters such as g reach below the baseline, and others (Ä) above the capitals.
  constexpr double below = 0.25;
  constexpr double above = 1.1;
  const Vector2 start = text.origin - (text.anchor * text.length) * text.right;
  const Vector2 along = text.length * text.right;
  const Vector2 low = start - below * text.up;
  const Vector2 high = start + above * text.up;
  return {low, low + along, high + along, high};
}

}  // namespace velt::view
