#pragma once

// Boxes, arranged so that those that meet a given one are found without a look at all of them.
//
// Neighbors are packed into groups, groups into larger groups, and so on up to one. It is made in n log n steps; a search
// takes as many as it finds boxes, and a few more for each group that only looked near.

#include <cstddef>
#include <span>
#include <vector>

#include "embedded/automation/geometry/Box.h"

namespace velt::automation {

class BoxTree {
 public:
  // The corners must be finite.
  explicit BoxTree(std::span<const Box> boxes);

  // Calls `visit(index)` for all boxes that meet this one, in no particular order, until it returns false. Returns
  // whether it went through all of them.
  template <class Visit>
  bool visitMeeting(const Box& box, Visit&& visit) const {
    return levels_.empty() || visitNode(levels_.size() - 1, 0, box, visit);
  }

 private:
  static constexpr std::size_t groupSize = 8;

  template <class Visit>
  bool visitNode(std::size_t level, std::size_t node, const Box& box, Visit&& visit) const {
    if (!levels_[level][node].meets(box)) return true;
    if (level == 0) return visit(order_[node]);
    const std::size_t first = node * groupSize;
    const std::size_t last = std::min(first + groupSize, levels_[level - 1].size());
    for (std::size_t child = first; child < last; ++child) {
      if (!visitNode(level - 1, child, box, visit)) return false;
    }
    return true;
  }

  // Where each box of the lowest level stood in the list.
  std::vector<std::size_t> order_;
  // The boxes, then the groups of each groupSize of the level below, up to a single one.
  std::vector<std::vector<Box>> levels_;
};

}  // namespace velt::automation
