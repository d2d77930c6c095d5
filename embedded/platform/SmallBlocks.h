#pragma once

// Small blocks that were given back, kept for whoever needs one next.
//
// A query asks every entity for the labels of its points again and again, 150 strings and arrays for each line, of which
// each lives for a moment: the general heap would be an eighth of the work.
//
// Threads: each has its own. A block may be taken on one thread and kept by another.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "embedded/platform/GeneralHeap.h"

namespace velt::platform {

class SmallBlocks {
 public:
  // Larger blocks are never kept.
  static constexpr std::size_t largest = 136;
  // Of each size; all others go back to the heap. That is enough for what lives but a moment. Many more would lie about in
  // memory in the order in which they came back, which takes longer than asking the heap.
  static constexpr std::uint32_t keptOfEach = 256;

  constexpr SmallBlocks() = default;
  SmallBlocks(const SmallBlocks&) = delete;
  SmallBlocks& operator=(const SmallBlocks&) = delete;
  ~SmallBlocks() {
    for (Stack& stack : stacks_) {
      while (void* const block = stack.pop())
        generalHeap::giveBack(block);
    }
  }

  // Blocks of about one size, by number; whoever asks for blocks of one size again and again keeps it.
  using Kind = std::size_t;
  [[nodiscard]] static constexpr Kind kindFor(std::size_t bytes) noexcept {
    return (bytes + step - beside - 1) / step;
  }

  // Of a block that holds so many bytes; kindFor() is that of one that was allocated for so many. One that holds less than the
  // smallest is of a kind that is never kept: there is no room in it for what stands in a block then.
  [[nodiscard]] static constexpr Kind kindOf(std::size_t held) noexcept {
    return held >= smallest ? (held - beside) / step : never;
  }

  // How many bytes to ask the general heap for, so that the block is of the kind for so many.
  [[nodiscard]] static constexpr std::size_t sizeFor(std::size_t bytes) noexcept {
    return bytes <= smallest ? smallest : kindFor(bytes) * step + beside;
  }

  // A block of at least so many bytes, not cleared; null when none is kept.
  [[nodiscard]] void* take(std::size_t bytes) noexcept {
    // A size near the largest number would wrap around when it is rounded up.
    return bytes <= largest ? takeOf(kindFor(bytes)) : nullptr;
  }
  [[nodiscard]] void* takeOf(Kind kind) noexcept {
    if (kind >= stacks_.size()) return nullptr;
    if (void* const block = stacks_[kind].pop()) [[likely]]
      return block;
    // What was given back as the smallest block of the heap is among those of the next kind.
    return kind == 0 ? stacks_[1].pop() : nullptr;
  }

  // Keeps a block of the general heap that holds so many bytes. False when it is to go back to the heap. A block that is kept
  // already was given back twice: like the heap itself, that ends the process, rather than two owners sharing it.
  [[nodiscard]] bool keep(void* memory, std::size_t bytes) noexcept { return keepOf(memory, kindOf(bytes)); }
  [[nodiscard]] bool keepOf(void* memory, Kind kind) noexcept {
    if (kind >= stacks_.size()) return false;
    auto* block = static_cast<Block*>(memory);
    if (block->keeper == this) {
      if (stacks_[kind].has(block)) std::abort();
      block->keeper = nullptr;
    }
    return keepAtOnce(memory, kind);
  }

  // The same for a block that does not look as if it were kept already; false, and nothing has happened, for one that does.
  // Calls nothing, so that whoever frees a string needs no more than a few instructions for it.
  [[nodiscard]] bool keepAtOnce(void* memory, Kind kind) noexcept {
    if (kind >= stacks_.size()) return false;
    auto* block = static_cast<Block*>(memory);
    if (block->keeper == this || !stacks_[kind].push(block)) return false;
    block->keeper = this;
    return true;
  }

 private:
  // The C library's heap holds 8 bytes beside every 16 that it gives, and gives 16 at least; other heaps may give less.
  static constexpr std::size_t beside = 8;
  static constexpr std::size_t step = 16;
  static constexpr std::size_t smallest = step + beside;
  static constexpr Kind never = static_cast<Kind>(-1);

  // What stands in a block while it is kept.
  struct Block {
    Block* next;
    const SmallBlocks* keeper;
  };

  class Stack {
   public:
    // Null when it is empty.
    void* pop() noexcept {
      Block* const block = top_;
      if (block == nullptr) return nullptr;
      top_ = block->next;
      --count_;
      block->keeper = nullptr;
      return block;
    }
    // False when it is full.
    bool push(Block* block) noexcept {
      if (count_ == keptOfEach) return false;
      block->next = top_;
      top_ = block;
      ++count_;
      return true;
    }
    [[nodiscard]] bool has(const Block* wanted) const noexcept {
      const Block* block = top_;
      while (block != nullptr && block != wanted)
        block = block->next;
      return block != nullptr;
    }

   private:
    Block* top_ = nullptr;
    std::uint32_t count_ = 0;
  };

  // By kind.
  std::array<Stack, (largest - beside) / step + 1> stacks_{};
};

}  // namespace velt::platform
