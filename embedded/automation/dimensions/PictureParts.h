#pragma once

// What the entities are that make the stored picture of a dimension.
//
// A drawing does not say it, so it is told by their kinds, and for lines by where they lie; what cannot be told with
// certainty makes the whole answer a refusal. The picture of a dimension whose block others show, too, is nobody's to
// change.

#include <cstdint>
#include <vector>

#include "embedded/automation/model/Reasons.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// The dimension names a block that shows something.
[[nodiscard]] bool hasPicture(const Subject& dimension);

struct PictureTexts {
  // Null when they could be told.
  const Reason* whyNot = nullptr;
  std::vector<std::uint32_t> records;
};

// Of a dimension with a picture: those texts that show any color that they are given.
[[nodiscard]] PictureTexts textsOfPicture(const Subject& dimension);

struct PictureLines {
  // Null when they could be told.
  const Reason* whyNot = nullptr;
  std::vector<std::uint32_t> dimensionLines;
  std::vector<std::uint32_t> extensionLines;
  std::vector<std::uint32_t> filledArrowheads;
  std::vector<std::uint32_t> arrowheadBlocks;
};

// Of a dimension with a picture that measures a length between two points.
[[nodiscard]] PictureLines linesOfPicture(const Subject& dimension);

}  // namespace velt::automation
