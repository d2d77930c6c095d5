#include "samples/gallery/Exhibits.h"

namespace velt::samples {
namespace {

Pairs viewport() {
  return {
      subclass("AcDbViewport"),
      // On the sheet: middle, width, height.
      point(10, 100, 100, 0),
      {40, 150},
      {41, 100},
      // It is on, and the second one of the sheet.
      {68, 2},
      {69, 2},
      // In the model: middle of the view, origin and distances of the snap and of the grid.
      flatPoint(12, 50, 50),
      flatPoint(13, 0, 0),
      flatPoint(14, 10, 10),
      flatPoint(15, 10, 10),
      // The direction from which it is seen, and what is looked at.
      point(16, 0, 0, 1),
      point(17, 0, 0, 0),
      // Length of the lens, clipping in front and at the back, height of the view.
      {42, 50},
      {43, 0},
      {44, 0},
      {45, 200},
      // Rotation of the snap and of the view, smoothness of circles.
      {50, 0},
      {51, 15},
      {72, 100},
      // Flags: among them that the zoom is locked.
      {90, 32864},
      {1, "plain.ctb"},
      {281, 0},
      // Its own coordinate system, with the origin and both directions.
      {71, 1},
      {74, 0},
      point(110, 0, 0, 0),
      point(111, 1, 0, 0),
      point(112, 0, 1, 0),
      {79, 0},
      {146, 0},
      {170, 0},
  };
}

}  // namespace

void addViewport(Exhibition& gallery) {
  gallery.drawing.paper().raw("VIEWPORT", viewport());
}

}  // namespace velt::samples
