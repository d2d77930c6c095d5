#pragma once

// The vertices of a light-weight polyline.

#include <optional>
#include <vector>

#include "embedded/automation/geometry/BulgePath.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

struct PolylineVertex {
  BulgeVertex place;
  // Of the segment to the next vertex.
  double startWidth = 0;
  double endWidth = 0;
};

struct PolylineShape {
  std::vector<PolylineVertex> vertices;
  // Of the vertices that have none of their own.
  double commonWidth = 0;
  bool closed = false;

  // The width that all segments have; nothing when they differ.
  [[nodiscard]] std::optional<double> width() const;

  [[nodiscard]] std::vector<BulgeVertex> path() const;
};

// Of the polyline that was asked for last on this thread: its elements are read one by one, and without this each of
// them would run through all vertices. It stays as it is until the next call.
[[nodiscard]] const PolylineShape& polylineShape(const Subject& subject);

}  // namespace velt::automation
