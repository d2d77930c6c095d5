#include "samples/gallery/Exhibits.h"

namespace velt::samples {
namespace {

// Its second edge is not drawn.
Pairs face() {
  return {
      subclass("AcDbFace"), point(10, 0, 20, 0), point(11, 10, 20, 0),
      point(12, 10, 30, 5), point(13, 0, 30, 5), {70, 2},
  };
}

// The corners of a solid and of a trace go from side to side; this one is 2 thick.
Pairs solid() {
  return {
      subclass("AcDbTrace"), point(10, 20, 20, 1), point(11, 30, 20, 1),
      point(12, 20, 30, 1),  point(13, 30, 30, 1), {39, 2},
  };
}

Pairs trace() {
  return {
      subclass("AcDbTrace"), point(10, 40, 20, 0), point(11, 42, 20, 0),
      point(12, 40, 30, 0),  point(13, 42, 30, 0),
  };
}

}  // namespace

void addFaces(Exhibition& gallery) {
  gallery.add("3DFACE", face());
  gallery.add("SOLID", solid());
  gallery.add("TRACE", trace());
}

}  // namespace velt::samples
