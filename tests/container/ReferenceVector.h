#pragma once

// The simplest vector that shares, to compare the real one with: a counted block, and every rule written down as
// it is explained. It is slow and never runs out of memory.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace velt::tests {

// What an element holds that nobody wrote.
inline constexpr int untouchedElement = -1;

struct ReferenceBlock {
  std::uint32_t logical = 0;
  std::uint32_t growCount = 8;
  std::vector<int> slots;
};

class ReferenceVector {
 public:
  explicit ReferenceVector(const std::shared_ptr<ReferenceBlock>& empty) : empty_(empty), block_(empty) {}
  ReferenceVector(const ReferenceVector&) = default;
  ReferenceVector& operator=(const ReferenceVector& other) {
    block_ = other.block_;
    return *this;
  }

  const ReferenceBlock& block() const { return *block_; }
  const void* identity() const { return block_.get(); }
  std::uint32_t physical() const { return static_cast<std::uint32_t>(block_->slots.size()); }
  bool isShared() const { return block_.use_count() >= 2; }

  void copyBeforeWrite(std::uint32_t keep) {
    if (!isShared()) return;
    const auto made = std::make_shared<ReferenceBlock>();
    made->growCount = block_->growCount;
    made->slots.assign(physical() == 0 ? 16 : physical(), untouchedElement);
    made->logical = std::min(keep, block_->logical);
    for (std::uint32_t i = 0; i < made->logical; ++i)
      made->slots[i] = block_->slots[i];
    block_ = made;
  }

  void setPhysicalLength(std::uint32_t n) {
    if (n == physical()) return;
    if (n == 0) {
      block_ = empty_;
      return;
    }
    const auto made = std::make_shared<ReferenceBlock>();
    made->growCount = block_->growCount;
    made->slots.assign(n, untouchedElement);
    made->logical = std::min(n, block_->logical);
    for (std::uint32_t i = 0; i < made->logical; ++i)
      made->slots[i] = block_->slots[i];
    block_ = made;
  }

  void setLogicalLength(std::uint32_t n) {
    if (n == block_->logical) return;
    if (n > physical()) {
      const std::uint32_t step = block_->logical + block_->growCount;
      setPhysicalLength(step <= n ? n : step);
    } else {
      copyBeforeWrite(std::min(block_->logical, n));
    }
    block_->logical = n;
  }

  void push(int number) {
    setLogicalLength(block_->logical + 1);
    block_->slots[block_->logical - 1] = number;
  }

  void append(std::vector<int> numbers) {
    const std::uint32_t before = block_->logical;
    setLogicalLength(before + static_cast<std::uint32_t>(numbers.size()));
    for (std::size_t i = 0; i < numbers.size(); ++i)
      block_->slots[before + i] = numbers[i];
  }

  void write(std::uint32_t i, int number) {
    copyBeforeWrite(block_->logical);
    block_->slots[i] = number;
  }

  int sharers() const { return static_cast<int>(block_.use_count()); }

  std::vector<int> contents() const {
    return {block_->slots.begin(), block_->slots.begin() + static_cast<std::ptrdiff_t>(block_->logical)};
  }

 private:
  std::shared_ptr<ReferenceBlock> empty_;
  std::shared_ptr<ReferenceBlock> block_;
};

}  // namespace velt::tests
