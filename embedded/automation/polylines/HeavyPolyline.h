#pragma once

// Polylines and meshes whose vertices are records of their own.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "embedded/automation/geometry/Vector.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

struct SegmentWidths {
  double start = 0;
  double end = 0;
};

struct DrawnVertex {
  Vector3 place;
  // Of the segment to the next one.
  double bulge = 0;
};

// A smoothed polyline holds two sequences of vertices: those that it was drawn with, and those of the smooth curve.
struct HeavyPolyline {
  // Of the vertices that people know.
  std::vector<Vector3> places;
  // Of these vertices.
  std::vector<std::uint32_t> records;
  // Of the segments after these vertices.
  std::vector<SegmentWidths> widths;
  // What is seen.
  std::vector<DrawnVertex> drawn;
  // Of a polyface mesh.
  std::size_t faces = 0;
  // Of the vertices that have none of their own.
  SegmentWidths commonWidths{};
  bool closed = false;

  // The width that all segments have; nothing when they differ.
  [[nodiscard]] std::optional<double> width() const;
};

// Of the polyline that was asked for last on this thread, so that reading its elements one by one does not run through
// all vertices each time. It stays as it is until the next call.
[[nodiscard]] const HeavyPolyline& heavyPolyline(const Subject& subject);

}  // namespace velt::automation
