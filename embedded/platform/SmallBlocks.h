#pragma once

// Small blocks that were given back, kept for whoever needs one next.
//
// A query asks every entity for the labels of its points again and again, 150 strings and arrays for each line, of which
// each lives for a moment: the general heap would be an eighth of the work.
//
// Threads: each has its own. A block may be taken on one thread and kept by another.

#include <algorithm>
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
    for (Kind kind = 0; kind < kinds; ++kind) {
      while (counts_[kind] != 0)
        generalHeap::giveBack(blocks_[kind][--counts_[kind]]);
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
    if (kind >= kinds) return nullptr;
    if (counts_[kind] == 0) [[unlikely]] {
      // What was given back as the smallest block of the heap is among those of the next kind.
      if (kind != 0 || counts_[1] == 0) return nullptr;
      kind = 1;
    }
    void* const block = blocks_[kind][--counts_[kind]];
    keeperIn(block) = nullptr;
    return block;
  }
  // Whether so many of a kind can be taken at once.
  [[nodiscard]] bool has(Kind kind, std::size_t count) const noexcept {
    return kind < kinds && counts_[kind] >= count;
  }
  // So many as it has. They stand there until the next block is kept, and each looks kept until its second word is written.
  [[nodiscard]] void* const* takeOf(Kind kind, std::size_t count) noexcept {
    return &blocks_[kind][counts_[kind] -= count];
  }

  // Keeps a block of the general heap that holds so many bytes. False when it is to go back to the heap. A block that is kept
  // already was given back twice: like the heap itself, that ends the process, rather than two owners sharing it.
  [[nodiscard]] bool keep(void* memory, std::size_t bytes) noexcept { return keepOf(memory, kindOf(bytes)); }
  [[nodiscard]] bool keepOf(void* block, Kind kind) noexcept {
    if (kind >= kinds) return false;
    if (keeperIn(block) == this) {
      const auto first = blocks_[kind].begin();
      const auto end = first + static_cast<std::ptrdiff_t>(counts_[kind]);
      if (std::find(first, end, block) != end) std::abort();
      keeperIn(block) = nullptr;
    }
    return keepAtOnce(block, kind);
  }

  // The same for a block that does not look as if it were kept already; false, and nothing has happened, for one that does.
  // Calls nothing, so that whoever frees a string needs no more than a few instructions for it.
  [[nodiscard]] bool keepAtOnce(void* block, Kind kind) noexcept {
    if (kind >= kinds || keeperIn(block) == this || counts_[kind] == keptOfEach) return false;
    blocks_[kind][counts_[kind]++] = block;
    keeperIn(block) = this;
    return true;
  }

 private:
  // The C library's heap holds 8 bytes beside every 16 that it gives, and gives 16 at least; other heaps may give less.
  static constexpr std::size_t beside = 8;
  static constexpr std::size_t step = 16;
  static constexpr std::size_t smallest = step + beside;
  static constexpr Kind kinds = (largest - beside) / step + 1;
  static constexpr Kind never = static_cast<Kind>(-1);

  // Stands in a block while it is kept: after its first word, where a string or an array has its length, so that most
  // blocks in use do not look kept.
  static const SmallBlocks*& keeperIn(void* block) noexcept {
    return static_cast<const SmallBlocks**>(block)[1];
  }

  // By kind. The blocks themselves do not tell which one comes next: it would be known only once it has come from memory.
  std::array<std::size_t, kinds> counts_{};
  std::array<std::array<void*, keptOfEach>, kinds> blocks_{};
};

}  // namespace velt::platform
