#pragma once

// The boundary of a hatch, as its record stores it.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "embedded/automation/geometry/Boundary.h"
#include "embedded/database/Lens.h"

namespace velt::automation {

// Where in the record of a hatch all of it stands but what entities have in common.
inline constexpr std::string_view hatchSubclassName = "AcDbHatch";

// How the ends of elliptic edges are to be understood: writers of drawings do not agree.
enum class EllipseEnds { Angles, Parameters };

// A loop, and where it stands in the record.
struct HatchPath {
  BoundaryLoop loop;
  // The pair that each vertex or edge begins with, in a view of the record: of an edge the one after its kind.
  std::vector<std::size_t> places{};
  // The handles of the entities that the loop was made from.
  std::vector<std::uint64_t> sources{};
};

// The loops in the plane of the hatch. Throws BoundaryError for a boundary that is cut short or makes no sense.
[[nodiscard]] std::vector<HatchPath> hatchPaths(const database::Lens& hatch, EllipseEnds ends);
[[nodiscard]] std::vector<BoundaryLoop> hatchLoops(const database::Lens& hatch, EllipseEnds ends);

[[nodiscard]] IslandStyle hatchIslandStyle(const database::Lens& hatch);

// What the hatch fills. Throws BoundaryError when that cannot be told exactly, and NotComputed when it takes too long.
[[nodiscard]] double hatchArea(const database::Lens& hatch);

}  // namespace velt::automation
