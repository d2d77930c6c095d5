// Polylines and meshes whose vertices are records of their own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "embedded/automation/model/Subject.h"
#include "embedded/automation/geometry/Vector.h"

namespace velt::automation {

struct SegmentWidths {
  double start = 0;
  double end = 0;
};

struct DrawnVertex {
  Vector3 place;
  double bulge = 0;  ///< of the segment to the next one
};

/// A smoothed polyline holds two sequences of vertices: those that it was drawn with, and those of the smooth curve.
struct HeavyPolyline {
  std::vector<Vector3> places;         ///< of the vertices that people know
  std::vector<std::uint32_t> records;  ///< of these vertices
  std::vector<SegmentWidths> widths;   ///< of the segments behind these vertices
  std::vector<DrawnVertex> drawn;      ///< what is seen
  std::size_t faces = 0;               ///< of a polyface mesh
  bool closed = false;
};

/// Of the polyline that was asked for last on this thread, so that reading its elements one by one does not run through
/// all vertices each time. It stays as it is until the next call.
[[nodiscard]] const HeavyPolyline& heavyPolyline(const Subject& subject);

}  // namespace velt::automation
