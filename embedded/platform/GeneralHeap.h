#pragma once

// The heap under all others. Builds that are shipped use mimalloc: of the texts that a query reads of every entity, hundreds
// of thousands live until its end and are then given back in another order, after which the C library's heap takes them
// up one by one and hands them out scattered. Debug and instrumented builds use the C library's, which memory checkers know.
//
// Threads: any; a block may be given back on another thread than it was taken on.

#include <cstddef>

namespace velt::platform::generalHeap {

// Whether blocks may be kept beside this heap: where memory checkers are to see every block they may not.
[[nodiscard]] bool mayBeSpared() noexcept;

// Null when memory is exhausted. Aligned for every type that fits into it. What is in the block is anybody's.
[[nodiscard]] void* take(std::size_t bytes) noexcept;
// The same, filled with zeros; memory that nobody touches costs nothing, however large the block.
[[nodiscard]] void* takeZeroed(std::size_t bytes) noexcept;
// Of a block that one of those answered, or null.
void giveBack(void* block) noexcept;
// How many bytes such a block holds, at least as many as it was taken for.
[[nodiscard]] std::size_t sizeOf(const void* block) noexcept;

// For whoever measures memory: while one lives, blocks that this thread gives back are not kept for others. Only one at a
// time.
class NothingSpared {
 public:
  NothingSpared() noexcept;
  NothingSpared(const NothingSpared&) = delete;
  NothingSpared& operator=(const NothingSpared&) = delete;
  ~NothingSpared();

 private:
  // In milliseconds, until the heap gives up what nobody needs.
  [[maybe_unused]] long usualDelay_;
};

}  // namespace velt::platform::generalHeap
