#pragma once

// Atomic counters. Increment and decrement answer the new value, the addition answers the old one.

#include <cstdint>

// On any thread.
inline std::int32_t tqInterlockedIncrement(std::int32_t* counter) {
  return __atomic_add_fetch(counter, 1, __ATOMIC_RELAXED);
}

// On any thread: what was written before a last decrement is seen after it.
inline std::int32_t tqInterlockedDecrement(std::int32_t* counter) {
  return __atomic_sub_fetch(counter, 1, __ATOMIC_ACQ_REL);
}

// On any thread; an addition of 0 reads.
inline std::int32_t tqInterlockedExchangeAdd(std::int32_t* counter, std::int32_t amount) {
  return __atomic_fetch_add(counter, amount, __ATOMIC_ACQUIRE);
}
