#pragma once

// Draws a space of a drawing.

#include <cstddef>
#include <optional>

#include "embedded/database/Drawing.h"
#include "view/Picture.h"
#include "view/Spaces.h"

namespace velt::view {

// What one picture may take, so that a damaged or malicious drawing ends in a picture that is cut short.
struct Limits {
  // Entities drawn, each as often as blocks and viewports repeat it.
  std::size_t entities = 4'000'000;
  std::size_t points = 30'000'000;
};

struct DrawOptions {
  // How many pixels a unit of the space takes; the finer, the more points for a curve. 0: as coarse as it takes to know
  // where things are.
  double scale = 0;
  // Only what is seen here is needed. Endless lines are cut off at it, and left out without it.
  std::optional<Box> window{};
  // How tall is what is seen at once, by which some points are sized; 0 for the window as a whole.
  double seenHeight = 0;
  Limits limits{};
};

// Layers that are off or frozen, invisible and erased entities are not seen. Whatever makes no sense (coordinates that
// are not numbers, blocks inside themselves, scales of zero) is left out; nothing that a drawing holds is an error.
// Requires a space and the contents of this drawing, which has not been edited since.
[[nodiscard]] Picture draw(const database::Drawing& drawing, const Contents& contents, const Space& space,
                           const DrawOptions& options);

}  // namespace velt::view
