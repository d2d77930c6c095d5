// The vertices of a light-weight polyline.
#pragma once

#include <vector>

#include "embedded/automation/model/Subject.h"
#include "embedded/automation/geometry/BulgePath.h"

namespace velt::automation {

struct PolylineVertex {
  BulgeVertex place;
  double startWidth = 0;  ///< of the segment to the next vertex
  double endWidth = 0;
};

struct PolylineShape {
  std::vector<PolylineVertex> vertices;
  bool closed = false;

  [[nodiscard]] std::vector<BulgeVertex> path() const;
};

/// Of the polyline that was asked for last on this thread: its elements are read one by one, and without this each of
/// them would run through all vertices. It stays as it is until the next call.
[[nodiscard]] const PolylineShape& polylineShape(const Subject& subject);

}  // namespace velt::automation
