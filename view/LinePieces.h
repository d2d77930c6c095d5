#pragma once

// What is seen of lines. Dashing all of a line that is a million dashes long would take seconds.

#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "view/Picture.h"

namespace velt::view {

// The part of a straight line that lies within the box, as multiples of its length; nothing when none does.
[[nodiscard]] std::optional<std::pair<double, double>> partWithin(Vector2 from, Vector2 to, const Box& box);

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
