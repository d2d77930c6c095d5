#pragma once

// What is seen of long lines with dashes: dashing all of a line that is a million dashes long would take seconds.

#include <span>
#include <vector>

#include "view/Picture.h"

namespace velt::view {

struct LinePiece {
  std::vector<Vector2> points{};
  // How far along the whole line it begins: where its dashes have got to.
  double start = 0;
};

// The pieces of the line from point to point that lie within the box, in their order. Points whose distance is not finite
// are not joined.
[[nodiscard]] std::vector<LinePiece> piecesWithin(std::span<const Vector2> points, bool isClosed,
                                                  const Box& box);

}  // namespace velt::view
