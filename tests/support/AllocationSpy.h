#pragma once

// Watches and fails the allocations of one thread: everything that goes through the global operator new, and all
// other blocks of the C heap (the host's heap is one of its users).
//
//   const AllocationSpy spy;
//   copy = original;
//   EXPECT_EQ(spy.allocations(), 0u);
//
// One test file of the executable includes "tests/support/ReplacedAllocation.h"; without it nothing is seen, and the
// constructor says so.
// Threads: sees the thread that made it alone; other threads allocate as ever. One at a time.
// Failure: a failed operator new throws std::bad_alloc, as it does when memory is exhausted; the C heap never fails
// here (the host's heaps have a switch of their own, embedded/platform/Allocation.h).
// Under the thread sanitizer, which keeps operator new to itself, only blocks are counted: tests of what happens when
// memory cannot be had skip there (seesNew).

#include <cstdint>

namespace velt::tests {

struct AllocationCounts {
  std::uint64_t blocks;  // asked for in any way, failed ones included
  std::uint64_t news;    // of these through operator new
  std::uint64_t arrayNews;
  std::uint64_t deletes;  // of blocks, not of null
  std::uint64_t arrayDeletes;
  std::uint64_t failures;
};

class AllocationSpy {
 public:
  // Counts only.
  AllocationSpy() : AllocationSpy(0, 0) {}
  // Fails the n-th operator new from now on, counted from 1, and only that one.
  [[nodiscard]] static AllocationSpy failNth(std::uint64_t n) { return {n, n}; }
  // Fails the n-th operator new from now on, counted from 1, and all after it.
  [[nodiscard]] static AllocationSpy failFrom(std::uint64_t n) { return {n, UINT64_MAX}; }

  // Whether operator new can be counted and failed in this build.
  [[nodiscard]] static bool seesNew();

  AllocationSpy(const AllocationSpy&) = delete;
  AllocationSpy& operator=(const AllocationSpy&) = delete;
  ~AllocationSpy();

  // What happened since this was made.
  [[nodiscard]] AllocationCounts counts() const;
  [[nodiscard]] std::uint64_t allocations() const { return counts().blocks; }

  // For ReplacedAllocation.h: what the replaced functions report.
  static void noteBlock() noexcept;
  // False: this operator new must fail.
  static bool noteNew(bool isArray) noexcept;
  static void noteDelete(bool isArray) noexcept;

 private:
  AllocationSpy(std::uint64_t first, std::uint64_t last);
};

// While one lives, allocations of its thread are neither counted nor failed: for what a stand-in of the host does in the
// midst of what is watched. They nest.
class AllocationPause {
 public:
  AllocationPause() noexcept;
  ~AllocationPause();
  AllocationPause(const AllocationPause&) = delete;
  AllocationPause& operator=(const AllocationPause&) = delete;
};

}  // namespace velt::tests
