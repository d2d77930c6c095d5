#include "samples/gallery/Exhibits.h"

namespace velt::samples {
namespace {

// Flags of a spline (code 70).
constexpr int rational = 4;
constexpr int planar = 8;

// In the plane, with the tolerances of its knots and of its control points.
Pairs splineHead(int flags, int degree, int knots, int controlPoints) {
  return {
      subclass("AcDbSpline"),
      point(210, 0, 0, 1),
      {70, flags},
      {71, degree},
      {72, knots},
      {73, controlPoints},
      {74, 0},
      {42, "1e-9"},
      {43, "1e-10"},
  };
}

// A corner of a multiline: where, the direction of the part that begins there, and that of the mitre.
Pairs multilineCorner(int x, int y) {
  // One of the lines: how far it runs from the corner, without gaps and filling.
  const auto line = [](int distance) -> Pairs { return {{74, 2}, each(41, {distance, 0}), {75, 0}}; };
  return {
      point(11, x, y, 0), point(12, 1, 0, 0), point(13, 0, 1, 0), line(0), line(-2),
  };
}

Pairs spline() {
  return {
      splineHead(planar, 3, 9, 5),
      // Knots.
      each(40, {0, 0, 0, 0}),
      {40, 0.5},
      each(40, {1, 1, 1, 1}),
      // Control points.
      point(10, 70, 20, 0),
      point(10, 75, 30, 0),
      point(10, 80, 20, 0),
      point(10, 85, 30, 0),
      point(10, 90, 20, 0),
  };
}

// A quarter of a circle.
Pairs rationalSpline() {
  return {
      splineHead(planar + rational, 2, 6, 3),
      each(40, {0, 0, 0, 1, 1, 1}),
      // Weights of the control points.
      {41, 1},
      {41, 0.7071067811865476},
      {41, 1},
      point(10, 100, 20, 0),
      point(10, 100, 30, 0),
      point(10, 90, 30, 0),
  };
}

Pairs multiline(const References& to) {
  return {
      subclass("AcDbMline"),
      {2, "STANDARD"},
      {340, to.multilineStyle},
      // Scale, justification at the top, open.
      {40, 2},
      {70, 0},
      {71, 1},
      // Corners, and lines.
      {72, 2},
      {73, 2},
      point(10, 110, 20, 0),
      point(210, 0, 0, 1),
      multilineCorner(110, 20),
      multilineCorner(120, 20),
  };
}

}  // namespace

void addCurves(Exhibition& gallery) {
  gallery.add("RAY", {subclass("AcDbRay"), point(10, 50, 20, 0), point(11, 0.6, 0.8, 0.0)});
  gallery.add("XLINE", {subclass("AcDbXline"), point(10, 60, 20, 0), point(11, 0.8, 0.6, 0.0)});
  gallery.add("SPLINE", spline());
  gallery.add("SPLINE", rationalSpline());
  gallery.add("MLINE", multiline(gallery.references));
}

}  // namespace velt::samples
