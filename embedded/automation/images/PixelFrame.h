#pragma once

// Where a picture lies: an origin, and the two edges of a pixel. A wipeout is stored as a picture, too.

#include <cmath>

#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

inline Vector3 acrossPixel(const Subject& subject) {
  return pointAt(subject.lens(), 11, dxf::anySubclass, {1, 0, 0});
}

inline Vector3 upPixel(const Subject& subject) {
  return pointAt(subject.lens(), 12, dxf::anySubclass, {0, 1, 0});
}

// In pixels.
inline Vector3 sizeInPixels(const Subject& subject) {
  return pointAt(subject.lens(), 13, dxf::anySubclass, {1, 1, 0});
}

inline double pictureWidth(const Subject& subject) {
  return sizeInPixels(subject).x * length(acrossPixel(subject));
}

inline double pictureHeight(const Subject& subject) {
  return sizeInPixels(subject).y * length(upPixel(subject));
}

inline double pictureRotation(const Subject& subject) {
  const Vector3 along = acrossPixel(subject);
  return normalizedAngle(std::atan2(along.y, along.x));
}

}  // namespace velt::automation
