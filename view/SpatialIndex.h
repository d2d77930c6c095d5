#pragma once

// Finds what of a picture is seen somewhere, and which entities are meant by a click or a window.
//
// Ownership: the index refers to the picture, which has to outlive it and stay as it is.
// Threads: any number may search at once.

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "view/Picture.h"

namespace velt::view {

class SpatialIndex {
 public:
  // Takes n log n steps for n primitives.
  explicit SpatialIndex(const Picture& picture);
  ~SpatialIndex();
  SpatialIndex(SpatialIndex&&) noexcept;
  SpatialIndex& operator=(SpatialIndex&&) noexcept;

  // The primitives whose boxes meet this one, in drawing order, as indexes.
  [[nodiscard]] std::vector<std::uint32_t> seenIn(const Box& box) const;

  // The records of the entities within reach of the point, each once: that which lies on top first. Lines are hit
  // within the distance (and their own width), areas and texts inside of them, too.
  [[nodiscard]] std::vector<std::uint32_t> at(Vector2 point, double distance) const;
  // Those of which everything lies within the box, in drawing order.
  [[nodiscard]] std::vector<std::uint32_t> within(const Box& box) const;
  // Those of which something lies within the box.
  [[nodiscard]] std::vector<std::uint32_t> crossing(const Box& box) const;

 private:
  class Tree;

  const Picture* picture_;
  std::unique_ptr<Tree> tree_;
  // Of everything that is seen of an entity: an entity lies within a window as a whole or not at all.
  std::unordered_map<std::uint32_t, Box> extents_;
};

}  // namespace velt::view
