#pragma once

// The points of an entity that its object was asked for last, as the drawing stores them.
//
// A palette asks a line for its start, its end, their difference, its length and its angle, and for each of them between
// two other entities' values. All of it rests on the same two points, whose six numbers take longer to read than the rest
// of those calls.
// Kept until the drawing is edited, wherever that is.
// Failure: what `read` throws goes to the caller, and the next call reads anew.

#include <array>
#include <cstddef>
#include <cstdint>

#include "embedded/automation/geometry/Vector.h"

namespace velt::automation {

class AskedPoints {
 public:
  // The one under that code, which is not 0, of an entity of one drawing, whose revision this is. A subclass is told from
  // another by where its name stands.
  template <class Read>
  Vector3 of(int code, const char* subclass, std::uint64_t revision, Read&& read) {
    if (revision_ != revision || subclass_ != subclass) {
      codes_ = {};
      revision_ = revision;
      subclass_ = subclass;
    }
    // The two points of an entity mostly have codes that follow each other.
    const auto slot = static_cast<unsigned>(code) % codes_.size();
    if (codes_[slot] != code) {
      codes_[slot] = 0;
      points_[slot] = read();
      codes_[slot] = code;
    }
    return points_[slot];
  }

  // For another entity.
  void forget() { codes_ = {}; }

 private:
  std::uint64_t revision_ = 0;
  const char* subclass_ = nullptr;
  // 0 for none.
  std::array<int, 2> codes_{};
  std::array<Vector3, 2> points_{};
};

}  // namespace velt::automation
