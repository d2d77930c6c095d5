#pragma once

// The bytes of an input, for targets in which they decide what somebody answers. At their end all answers are 0, which
// stands for an honest one.

#include <cstddef>
#include <cstdint>
#include <span>

namespace velt::fuzz {

class Answers {
 public:
  explicit Answers(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::uint8_t byte() {
    if (next_ == bytes_.size()) return 0;
    return bytes_[next_++];
  }
  // From 0 to `count` - 1.
  std::size_t below(std::size_t count) { return byte() % count; }

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t next_ = 0;
};

}  // namespace velt::fuzz
