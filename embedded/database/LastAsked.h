#pragma once

// What was last worked out of an entity.
//
// A palette asks an entity for all its values in a row, and several of them rest on the same facts: the vertices of a
// polyline, the attributes of a block reference. Kept until another entity is asked or its drawing is edited.
// Threads: one for each, so a function keeps it as thread_local.
// Failure: what `workOut` throws goes to the caller, and the next call works it out anew.

#include <cstdint>

#include "embedded/database/Drawing.h"

namespace velt::database {

template <class Facts>
class LastAsked {
 public:
  // Of an entity of that drawing. They stay where they are until the next call.
  template <class WorkOut>
  Facts& of(VkDbObjectId entity, const Drawing& drawing, WorkOut&& workOut) {
    // An id is never given twice, so it tells one drawing from another as well.
    const std::uint64_t revision = drawing.revision();
    if (entity_ != entity || revision_ != revision) {
      entity_ = VkDbObjectId::kNull;
      facts_ = workOut();
      entity_ = entity;
      revision_ = revision;
    }
    return facts_;
  }

 private:
  VkDbObjectId entity_;
  std::uint64_t revision_ = 0;
  Facts facts_{};
};

}  // namespace velt::database
