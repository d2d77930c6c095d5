#pragma once

// The one place from which the host takes memory for what it hands out, and the switch that makes it fail.
//
// Each heap can be made to fail alone, so that a test reaches the failure of the very call that it is about.
// Threads: allocation may happen on every thread. A fault counts the allocations of all threads, so a test that counts
// keeps other threads quiet.

#include <cstddef>
#include <cstdint>

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

// Null when memory is exhausted, really or by a fault. For 0 bytes a block like any other. Aligned for every type.
[[nodiscard]] void* allocate(Heap heap, std::size_t bytes) noexcept;
// The same, filled with zeros; memory that nobody touches costs nothing, however large the block.
[[nodiscard]] void* allocateZeroed(Heap heap, std::size_t bytes) noexcept;
// Does nothing for null.
void deallocate(void* block) noexcept;

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
