#pragma once

// Allocation on the host's heap: as a base class for blocks, and as an allocator for standard containers.

#include <cstddef>
#include <new>

#include "host/platform/Memory.h"

// When the host's heap is exhausted, new answers null and does not throw.
struct TqHeapOp {
  static void* operator new(std::size_t bytes) noexcept { return _tqMalloc(bytes); }
  static void operator delete(void* block) noexcept { _tqFree(block); }
};

template <class T>
struct _TqSTLAllocator {
  using value_type = T;

  _TqSTLAllocator() = default;
  template <class U>
  _TqSTLAllocator(const _TqSTLAllocator<U>&) noexcept {}

  T* allocate(std::size_t count) {
    if (count > static_cast<std::size_t>(-1) / sizeof(T)) throw std::bad_array_new_length();
    void* const block = _tqMalloc(count * sizeof(T));
    if (block == nullptr) throw std::bad_alloc();
    return static_cast<T*>(block);
  }
  void deallocate(T* block, std::size_t) noexcept { _tqFree(block); }

  template <class U>
  bool operator==(const _TqSTLAllocator<U>&) const noexcept {
    return true;
  }
};
