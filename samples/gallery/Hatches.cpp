#include <cstddef>
#include <span>

#include "samples/gallery/Exhibits.h"

namespace velt::samples {
namespace {

Outline square(double left) {
  return {{left, 80}, {left + 10, 80}, {left + 10, 90}, {left, 90}};
}

// Parallel lines that the user asked for by angle and distance, not by a pattern's name.
Pairs userDefinedHatch() {
  return {
      subclass("AcDbHatch"),
      point(10, 0, 0, 0),
      point(210, 0, 0, 1),
      {2, "_USER"},
      // Not solid, not associative.
      {70, 0},
      {71, 0},
      // One boundary: a closed polyline of four corners without bulges, made of no other entity.
      {91, 1},
      {92, 2},
      {72, 0},
      {73, 1},
      {93, 4},
      flatPoint(10, 45, 80),
      flatPoint(10, 55, 80),
      flatPoint(10, 55, 90),
      flatPoint(10, 45, 90),
      {97, 0},
      // Style, kind of pattern, angle, distance, no second direction.
      {75, 0},
      {76, 0},
      {52, 30},
      {41, 2},
      {77, 0},
      // One family of lines: its angle, a point of the first line, the way to the next one, no dashes.
      {78, 1},
      {53, 30},
      {43, 0},
      {44, 0},
      {45, -1},
      {46, 1.7320508075688772},
      {79, 0},
      // A point inside.
      {98, 1},
      flatPoint(10, 50, 85),
  };
}

}  // namespace

void addHatches(Exhibition& gallery) {
  BlockBuilder& model = gallery.model;
  const Outline outlines[] = {square(0), square(15), square(30)};
  const auto boundary = [&](std::size_t number) { return std::span(&outlines[number], 1); };
  const PatternLine line{.angle = 45, .offset = {0, 3.175}};
  model.patternHatch(boundary(0), {.name = "ANSI31", .lines = {line}, .angle = 10, .scale = 0.5},
                     gallery.style);
  model.solidHatch(boundary(1), gallery.style);
  model.gradientHatch(boundary(2), {.name = "CYLINDER", .firstColor = 0xFF0000, .angle = 30}, gallery.style);
  gallery.add("HATCH", userDefinedHatch());
}

}  // namespace velt::samples
