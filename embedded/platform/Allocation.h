#pragma once

// The one place from which the host takes memory for what it hands out, and the switch that makes it fail.
//
// Each heap can be made to fail alone, so that a test reaches the failure of the very call that it is about.
// Threads: allocation may happen on every thread. A fault counts the allocations of all threads, so a test that counts
// keeps other threads quiet.

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "embedded/platform/GeneralHeap.h"
#include "embedded/platform/SmallBlocks.h"

namespace velt::platform {

// Flags: `Heap::Strings | Heap::Arrays` names two heaps.
enum class Heap : std::uint32_t {
  // _tqMalloc
  Host = 1,
  // BSTRs
  Strings = 2,
  // CoTaskMemAlloc
  TaskMemory = 4,
  // SAFEARRAYs
  Arrays = 8,
  // COM objects
  Objects = 16,
  All = 31
};

constexpr Heap operator|(Heap a, Heap b) {
  return static_cast<Heap>(static_cast<std::uint32_t>(a) | static_cast<std::uint32_t>(b));
}

// What stands here is inline because a query takes and gives back a hundred and fifty blocks for each line of a drawing.
namespace allocation {

// The heaps of which an allocation may fail by a fault; 0 when none is set.
extern constinit std::atomic<std::uint32_t> armedHeaps;
// Null before the thread has given a block back and after it has ended, and in builds that leave every block to the heap
// (GeneralHeap.h).
extern constinit thread_local SmallBlocks* smallBlocks [[gnu::tls_model("initial-exec")]];

[[nodiscard]] void* allocateFromHeap(Heap heap, std::size_t bytes) noexcept;
// Does the same as the functions below, where they do not at once.
void deallocateFirst(void* block, SmallBlocks::Kind kind) noexcept;

}  // namespace allocation

// The blocks from which this thread takes, for whoever takes many at once; null where each has to be asked for by itself.
[[nodiscard]] inline SmallBlocks* blocksAtOnce() noexcept {
  SmallBlocks* const kept = allocation::smallBlocks;
  return kept != nullptr && allocation::armedHeaps.load(std::memory_order_acquire) == 0 ? kept : nullptr;
}

// Null when memory is exhausted, really or by a fault. For 0 bytes a block like any other. Aligned for every type.
[[nodiscard]] inline void* allocate(Heap heap, std::size_t bytes) noexcept {
  if (SmallBlocks* const kept = blocksAtOnce()) {
    if (void* block = kept->take(bytes)) return block;
  }
  return allocation::allocateFromHeap(heap, bytes);
}
// The same, filled with zeros; memory that nobody touches costs nothing, however large the block.
[[nodiscard]] void* allocateZeroed(Heap heap, std::size_t bytes) noexcept;
// Gives a block back that was allocated with at least so many bytes, if that takes no more than a few instructions; false,
// and nothing has happened, if it does not.
[[nodiscard]] inline bool deallocateAtOnce(void* block, std::size_t bytes) noexcept {
  SmallBlocks* const kept = allocation::smallBlocks;
  return kept != nullptr && kept->keepAtOnce(block, SmallBlocks::kindFor(bytes));
}
// Of a block that was allocated with at least so many bytes.
inline void deallocate(void* block, std::size_t bytes) noexcept {
  if (!deallocateAtOnce(block, bytes)) allocation::deallocateFirst(block, SmallBlocks::kindFor(bytes));
}
// Does nothing for null.
inline void deallocate(void* block) noexcept {
  if (block == nullptr) return;
  SmallBlocks* const kept = allocation::smallBlocks;
  const SmallBlocks::Kind kind = SmallBlocks::kindOf(generalHeap::sizeOf(block));
  if (kept == nullptr || !kept->keepAtOnce(block, kind)) allocation::deallocateFirst(block, kind);
}

// Makes allocations fail while it lives. Only one has an effect at a time: a second one replaces the first for good.
class AllocationFault {
 public:
  // Fails nothing and counts: afterwards `allocations()` tells how many could be made to fail.
  [[nodiscard]] static AllocationFault countOnly(Heap heaps = Heap::All);
  // Fails the n-th allocation from now on, counted from 1, and only that one.
  [[nodiscard]] static AllocationFault failNth(std::uint64_t n, Heap heaps = Heap::All);
  // Fails the n-th allocation from now on, counted from 1, and all after it.
  [[nodiscard]] static AllocationFault failFrom(std::uint64_t n, Heap heaps = Heap::All);
  // Fails every allocation of more bytes than this; what the host adds to a block for itself counts too.
  [[nodiscard]] static AllocationFault failAbove(std::size_t bytes, Heap heaps = Heap::All);

  AllocationFault(const AllocationFault&) = delete;
  AllocationFault& operator=(const AllocationFault&) = delete;
  ~AllocationFault();

  // Allocations in the named heaps since the fault was set, failed ones included.
  [[nodiscard]] std::uint64_t allocations() const noexcept;
  [[nodiscard]] std::uint64_t failures() const noexcept;

 private:
  AllocationFault(Heap heaps, std::uint64_t first, std::uint64_t last, std::size_t largest);
};

}  // namespace velt::platform
