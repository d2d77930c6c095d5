#pragma once

// The host's heap and crash recorder in this executable: they count, fail on demand, and allocate nothing themselves.
// They are defined in TqVectorTest.cpp and take the place of the host's.

#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

#include "host/platform/ErrorStatus.h"
#include "host/platform/VectorBlock.h"

namespace velt::tests {

// Blocks of _tqMalloc that are not yet freed.
long liveHostBlocks();
// Calls of _tqMalloc since the process began, failed ones included.
std::uint64_t hostAllocations();

// Fails calls of _tqMalloc while it lives.
class HostHeapFault {
 public:
  // Fails the n-th call from now on, counted from 1, and only that one.
  [[nodiscard]] static HostHeapFault failNth(std::uint64_t n) { return {n, n}; }
  [[nodiscard]] static HostHeapFault failAll() { return {1, UINT64_MAX}; }
  HostHeapFault(const HostHeapFault&) = delete;
  HostHeapFault& operator=(const HostHeapFault&) = delete;
  ~HostHeapFault();

  [[nodiscard]] std::uint64_t failures() const;

 private:
  HostHeapFault(std::uint64_t first, std::uint64_t last);
};

// The status codes that were reported since the last clearReports(), in order.
std::vector<int> reports();
void clearReports();

// The data block of a vector. A vector is nothing but a pointer to it.
template <class Vector>
TqVectorBlock* blockOf(const Vector& vector) {
  static_assert(sizeof(Vector) == sizeof(TqVectorBlock*));
  return *reinterpret_cast<TqVectorBlock* const*>(&vector);
}

// An element that knows how many of its kind exist, how often one was assigned, and whether it was moved away.
struct Slot {
  static constexpr int untouched = -1;
  static constexpr int movedFrom = -2;

  Slot() { ++live; }
  Slot(int number) : value(number) { ++live; }
  Slot(const Slot& other) : value(other.value) { ++live; }
  Slot& operator=(const Slot& other) {
    value = other.value;
    ++assignments;
    return *this;
  }
  Slot& operator=(Slot&& other) noexcept {
    value = std::exchange(other.value, int{movedFrom});
    ++assignments;
    return *this;
  }
  ~Slot() { --live; }

  friend bool operator==(const Slot& a, const Slot& b) { return a.value == b.value; }

  int value = untouched;

  static inline long live = 0;
  static inline long assignments = 0;
};

}  // namespace velt::tests
