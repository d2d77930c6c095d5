#pragma once

// The one place from which the host takes memory for what it hands out, and the switch that makes it fail.
//
// Heaps can be made to fail one by one, so that a test reaches the failure of exactly the call that it is about.
// Threads: allocation may happen on every thread; faults count the allocations of all threads, so set them while the
// threads that matter are known.

#include <cstddef>
#include <cstdint>

namespace velt::platform {

// Flags: `Heap::Strings | Heap::Arrays` names two heaps.
enum class Heap : std::uint32_t {
  Host = 1,        // _tqMalloc
  Strings = 2,     // BSTRs
  TaskMemory = 4,  // CoTaskMemAlloc
  Arrays = 8,      // SAFEARRAYs
  Objects = 16,    // COM objects
  All = 31
};

constexpr Heap operator|(Heap a, Heap b) {
  return static_cast<Heap>(static_cast<std::uint32_t>(a) | static_cast<std::uint32_t>(b));
}

// Null when memory is exhausted, really or on demand. Never null for 0 bytes. Aligned for every type.
[[nodiscard]] void* allocate(Heap heap, std::size_t bytes) noexcept;
// The same, filled with zeros; memory that nobody touches costs nothing, however large the block.
[[nodiscard]] void* allocateZeroed(Heap heap, std::size_t bytes) noexcept;
// Null is allowed.
void deallocate(void* block) noexcept;

// Makes allocations fail while it lives. At most one lives at a time; a second one takes over from the first and ends
// its effect.
class AllocationFault {
 public:
  // Fails nothing and counts: `allocations()` tells how many there are to fail.
  [[nodiscard]] static AllocationFault countOnly(Heap heaps = Heap::All);
  // Fails the n-th allocation from now on, counted from 1, and only that one.
  [[nodiscard]] static AllocationFault failNth(std::uint64_t n, Heap heaps = Heap::All);
  // Fails the n-th allocation from now on, counted from 1, and all after it.
  [[nodiscard]] static AllocationFault failFrom(std::uint64_t n, Heap heaps = Heap::All);
  // Fails every allocation of more bytes than this, the host's own header included.
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
