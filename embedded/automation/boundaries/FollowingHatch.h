#pragma once

// An associative hatch that follows a change of an entity that it was made from.
//
// A hatch stores its boundary apart from the entities that it was made from, so both have to change together. That can be
// done exactly where the boundary consists of whole pieces of the entity: all of a circle or an ellipse, or every segment
// of a polyline. Where a boundary was cut from its entities, the places of the cuts would have to be found anew.
//
// Use: before the entity changes, of(); after it, follow(), within the same Drawing::atomically().

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "embedded/automation/boundaries/HatchBoundary.h"
#include "embedded/automation/boundaries/SourceOutline.h"

namespace velt::automation {

class FollowingHatch {
 public:
  // Nothing where the boundary does not follow from the entity piece by piece, and where the area of the hatch cannot be
  // told.
  [[nodiscard]] static std::optional<FollowingHatch> of(const database::Drawing& drawing, std::uint32_t hatch,
                                                        std::uint32_t source);

  // Changes the boundary as the entity has changed; nothing else of the hatch but its elevation, where this entity is the
  // only one that it was made from. Throws BoundaryError when the loops would then be open or cross, or the entity would
  // have left the plane of the hatch; NotComputed when it takes too long to tell.
  void follow(database::Drawing& drawing) const;

 private:
  // One edge of the boundary, and the segment of a polyline that it is.
  struct Link {
    std::size_t path = 0;
    std::size_t edge = 0;
    std::size_t segment = 0;
    bool isBackwards = false;
  };

  FollowingHatch(std::uint32_t hatch, std::uint32_t source, EllipseEnds ends, SourceOutline outline)
      : hatch_(hatch), source_(source), ends_(ends), outline_(std::move(outline)) {}

  bool linkWhole(const std::vector<HatchPath>& paths, std::uint64_t handle);
  bool linkSegments(const std::vector<HatchPath>& paths, std::uint64_t handle);
  void followHeight(database::Drawing& drawing, double height) const;
  void followWhole(database::Drawing& drawing, const std::vector<HatchPath>& paths,
                   const EllipticalArc& whole) const;
  void followSegments(database::Drawing& drawing, const std::vector<HatchPath>& paths,
                      const std::vector<OutlineSegment>& segments) const;

  std::uint32_t hatch_;
  std::uint32_t source_;
  EllipseEnds ends_;
  // Before the change.
  SourceOutline outline_;
  // Of a polyline.
  std::vector<Link> links_{};
  // Of a circle or an ellipse: the loops that are all of it.
  std::vector<std::size_t> wholePaths_{};
};

}  // namespace velt::automation
