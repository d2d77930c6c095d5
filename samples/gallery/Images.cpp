#include "samples/gallery/Exhibits.h"

namespace velt::samples {
namespace {

Pairs image(const References& to) {
  return {
      subclass("AcDbRasterImage"),
      {90, 0},
      // A corner, what one pixel measures along both sides, and how many there are.
      point(10, 100, 40, 0),
      point(11, 0.1, 0, 0),
      point(12, 0, 0.1, 0),
      flatPoint(13, 200, 100),
      {340, to.imageDefinition},
      // Shown; not clipped.
      {70, 7},
      {280, 0},
      // Brightness, contrast, fade.
      {281, 60},
      {282, 40},
      {283, 10},
      {360, 0},
      // The whole of it, as a rectangle.
      {71, 1},
      {91, 2},
      flatPoint(14, -0.5, -0.5),
      flatPoint(14, 199.5, 99.5),
  };
}

Pairs wipeout() {
  return {
      subclass("AcDbWipeout"),
      {90, 0},
      point(10, 130, 40, 0),
      point(11, 10, 0, 0),
      point(12, 0, 10, 0),
      flatPoint(13, 1, 1),
      {340, 0},
      // Shown, and clipped.
      {70, 7},
      {280, 1},
      {281, 50},
      {282, 50},
      {283, 0},
      {360, 0},
      // A polygon, which ends where it began.
      {71, 2},
      {91, 5},
      flatPoint(14, -0.5, 0.5),
      flatPoint(14, 0.5, 0.5),
      flatPoint(14, 0.5, -0.5),
      flatPoint(14, -0.5, -0.5),
      flatPoint(14, -0.5, 0.5),
  };
}

Pairs underlay(const References& to) {
  return {
      subclass("AcDbUnderlayReference"),
      {340, to.underlayDefinition},
      point(10, 200, 40, 0),
      // Scale, rotation, and the plane.
      {41, 0.5},
      {42, 0.5},
      {43, 0.5},
      {50, 90},
      point(210, 0, 0, 1),
      // Shown, contrast, fade.
      {280, 10},
      {281, 90},
      {282, 20},
  };
}

}  // namespace

void addImages(Exhibition& gallery) {
  gallery.add("IMAGE", image(gallery.references));
  gallery.add("WIPEOUT", wipeout());
}

void addUnderlay(Exhibition& gallery) {
  gallery.add("PDFUNDERLAY", underlay(gallery.references));
}

}  // namespace velt::samples
