#pragma once

// What else of a drawing tells the shape or the wording of an entity, and would contradict it after a put.

#include <vector>

#include "embedded/automation/boundaries/FollowingHatch.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// Throws Refusal for an attribute, or the definition of one, that has several lines: everything about its text is stored
// twice.
void requireSingleLine(const database::Drawing& drawing, std::uint32_t record);

// Throws Refusal for such an attribute, for an entity that a dimension or a leader follows, for one that an associative
// hatch follows in a way that cannot be worked out (see FollowingHatch.h) unless the drawing's associations are to be
// broken, and for one whose place and size are stored for every scale of annotations.
void requireFreeShape(const database::Drawing& drawing, std::uint32_t record);

// The associative hatches that follow an entity, as it and they are now. Bring them along after it has changed.
class FollowingHatches {
 public:
  FollowingHatches(database::Drawing& drawing, std::uint32_t entity);

  // Where the drawing's associations are to be broken, they no longer follow the entity; otherwise their boundaries change
  // with it. Throws Refusal where that gives no boundary.
  void bringAlong();

 private:
  database::Drawing& drawing_;
  std::uint32_t entity_;
  std::vector<FollowingHatch> hatches_{};
};

// The associative hatches that follow the entity no longer do.
void releaseHatches(database::Drawing& drawing, std::uint32_t record);

// The hatch no longer follows what it was made from, and nothing says so any more. Its boundary stays what it is.
void breakAssociation(database::Drawing& drawing, std::uint32_t hatch);

// Throws Refusal for such an attribute, and for a text whose wording is made by a field.
void requireOwnWording(const Subject& text);

}  // namespace velt::automation
