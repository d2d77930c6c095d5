#pragma once

// The references to an object, counted without atomic additions while the process has one thread: a query counts
// several times for each value that it reads.
//
// Threads: may be changed on every thread. A thread that is started sees what was counted before it.

#include <sys/single_threaded.h>

#include <atomic>

#include "host/com/Types.h"

namespace velt::com {

class ReferenceCount {
 public:
  // Each answers what is left.
  ULONG increment() noexcept {
    if (__libc_single_threaded) return alone(1);
    return count_.fetch_add(1, std::memory_order_relaxed) + 1;
  }
  ULONG decrement() noexcept {
    if (__libc_single_threaded) return alone(static_cast<ULONG>(-1));
    return count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
  }
  [[nodiscard]] ULONG get() const noexcept { return count_.load(std::memory_order_relaxed); }

 private:
  ULONG alone(ULONG change) noexcept {
    const ULONG left = count_.load(std::memory_order_relaxed) + change;
    count_.store(left, std::memory_order_relaxed);
    return left;
  }

  std::atomic<ULONG> count_{1};
};

}  // namespace velt::com
