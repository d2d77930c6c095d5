#include "embedded/automation/geometry/BoxTree.h"

#include <cmath>
#include <numeric>
#include <utility>

namespace velt::automation {

BoxTree::BoxTree(std::span<const Box> boxes) : order_(boxes.size()) {
  if (boxes.empty()) return;
  const auto sort = [&](std::size_t from, std::size_t to, double Vector2::*axis) {
    std::sort(order_.begin() + static_cast<std::ptrdiff_t>(from),
              order_.begin() + static_cast<std::ptrdiff_t>(to), [&](std::size_t a, std::size_t b) {
                return boxes[a].low.*axis / 2 + boxes[a].high.*axis / 2
                       < boxes[b].low.*axis / 2 + boxes[b].high.*axis / 2;
              });
  };
  // As many upright strips as there are groups in each of them.
  std::iota(order_.begin(), order_.end(), std::size_t{0});
  const double groups = std::ceil(static_cast<double>(boxes.size()) / groupSize);
  const std::size_t strip = groupSize * static_cast<std::size_t>(std::ceil(std::sqrt(groups)));
  sort(0, boxes.size(), &Vector2::x);
  for (std::size_t first = 0; first < boxes.size(); first += strip)
    sort(first, std::min(first + strip, boxes.size()), &Vector2::y);

  std::vector<Box> level;
  level.reserve(boxes.size());
  for (const std::size_t index : order_)
    level.push_back(boxes[index]);
  levels_.push_back(std::move(level));
  while (levels_.back().size() > 1) {
    const std::vector<Box>& below = levels_.back();
    std::vector<Box> above((below.size() + groupSize - 1) / groupSize);
    for (std::size_t i = 0; i < below.size(); ++i)
      above[i / groupSize].include(below[i]);
    levels_.push_back(std::move(above));
  }
}

}  // namespace velt::automation
