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

namespace velt::platform {

class SmallBlocks {
 public:
  // Larger blocks are never kept.
  static constexpr std::size_t largest = 136;
  // Of each size; all others go back to the heap, so that a thread keeps half a megabyte at most.
  static constexpr std::uint32_t keptOfEach = 1024;

  constexpr SmallBlocks() = default;
  SmallBlocks(const SmallBlocks&) = delete;
  SmallBlocks& operator=(const SmallBlocks&) = delete;
  ~SmallBlocks() {
    for (List& list : lists_) {
      while (list.first != nullptr)
        std::free(takeFrom(list));
    }
  }

  // How many bytes a block of the C heap holds that was asked for so many, or more.
  [[nodiscard]] static constexpr std::size_t sizeFor(std::size_t bytes) noexcept {
    return bytes <= smallest ? smallest : smallest + (bytes - smallest + step - 1) / step * step;
  }

  // A block of at least so many bytes, not cleared; null when none is kept.
  [[nodiscard]] void* take(std::size_t bytes) noexcept {
    if (bytes > largest) return nullptr;
    List& list = lists_[(sizeFor(bytes) - smallest) / step];
    return list.first == nullptr ? nullptr : takeFrom(list);
  }

  // Keeps a block of the C heap that holds so many bytes. False when it is to go back to the heap. A block that is kept
  // already was given back twice: like the heap itself, that ends the process, rather than two owners sharing it.
  [[nodiscard]] bool keep(void* memory, std::size_t bytes) noexcept {
    if (bytes < smallest || bytes >= largest + step) return false;
    List& list = lists_[(bytes - smallest) / step];
    auto* block = static_cast<Block*>(memory);
    if (block->keeper == this && isIn(list, block)) std::abort();
    if (list.count == keptOfEach) return false;
    *block = {list.first, this};
    list.first = block;
    ++list.count;
    return true;
  }

 private:
  static constexpr std::size_t smallest = 24;
  static constexpr std::size_t step = 16;

  // What stands in a block while it is kept.
  struct Block {
    Block* next;
    const SmallBlocks* keeper;
  };

  struct List {
    Block* first = nullptr;
    std::uint32_t count = 0;
  };

  static void* takeFrom(List& list) noexcept {
    Block* block = list.first;
    list.first = block->next;
    --list.count;
    block->keeper = nullptr;
    return block;
  }

  static bool isIn(const List& list, const Block* wanted) noexcept {
    const Block* block = list.first;
    while (block != nullptr && block != wanted)
      block = block->next;
    return block != nullptr;
  }

  std::array<List, (largest - smallest) / step + 1> lists_{};
};

}  // namespace velt::platform
