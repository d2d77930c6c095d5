#pragma once

// The functions that tell AllocationSpy what is allocated. They take the place of the standard library's for the
// whole process, so exactly one test file of an executable includes this. (Not part of the support archive: a
// sanitizer's own operator new knows more, and executables that watch nothing keep it.)

#include <cstddef>
#include <cstdlib>
#include <new>

#include "tests/support/AllocationSpy.h"

#if defined(__has_feature)
#define VELT_HAS_FEATURE(feature) __has_feature(feature)
#else
#define VELT_HAS_FEATURE(feature) 0
#endif
#if defined(__SANITIZE_THREAD__) || VELT_HAS_FEATURE(thread_sanitizer)
#define VELT_THREAD_SANITIZER 1
#else
#define VELT_THREAD_SANITIZER 0
#endif
#if VELT_THREAD_SANITIZER || defined(__SANITIZE_ADDRESS__) || VELT_HAS_FEATURE(address_sanitizer)
#define VELT_SANITIZED_HEAP 1
#else
#define VELT_SANITIZED_HEAP 0
#endif

// --- the C heap ----------------------------------------------------------------------------------------------------

#if VELT_SANITIZED_HEAP

// The sanitizer has replaced the heap's functions already, and lets others listen.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(const volatile void*, std::size_t),
                                                         void (*freed)(const volatile void*));

namespace velt::tests {
[[maybe_unused]] const int hooksInstalled = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void*, std::size_t) { AllocationSpy::noteBlock(); }, [](const volatile void*) {});
}  // namespace velt::tests

#else

// The names under which the C library keeps its own functions for those that take their place.
extern "C" {
void* __libc_malloc(std::size_t bytes) noexcept;
void* __libc_calloc(std::size_t count, std::size_t bytes) noexcept;
void* __libc_realloc(void* block, std::size_t bytes) noexcept;
void* __libc_memalign(std::size_t alignment, std::size_t bytes) noexcept;

void* malloc(std::size_t bytes) noexcept {
  velt::tests::AllocationSpy::noteBlock();
  return __libc_malloc(bytes);
}
void* calloc(std::size_t count, std::size_t bytes) noexcept {
  velt::tests::AllocationSpy::noteBlock();
  return __libc_calloc(count, bytes);
}
void* realloc(void* block, std::size_t bytes) noexcept {
  velt::tests::AllocationSpy::noteBlock();
  return __libc_realloc(block, bytes);
}
void* aligned_alloc(std::size_t alignment, std::size_t bytes) noexcept {
  velt::tests::AllocationSpy::noteBlock();
  return __libc_memalign(alignment, bytes);
}
}

#endif

#if !VELT_THREAD_SANITIZER

// --- global operator new and delete ----------------------------------------------------------------------------------

namespace velt::tests {

inline void* newBlock(bool isArray, std::size_t bytes) noexcept {
  return AllocationSpy::noteNew(isArray) ? std::malloc(bytes != 0 ? bytes : 1) : nullptr;
}

inline void* newBlock(bool isArray, std::size_t bytes, std::align_val_t alignment) noexcept {
  if (!AllocationSpy::noteNew(isArray)) return nullptr;
  const auto boundary = static_cast<std::size_t>(alignment);
  return std::aligned_alloc(boundary, (bytes + boundary - 1) / boundary * boundary);
}

inline void* orThrow(void* block) {
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

inline void deleteBlock(bool isArray, void* block) noexcept {
  if (block != nullptr) AllocationSpy::noteDelete(isArray);
  std::free(block);
}

}  // namespace velt::tests

// clang-format off
void* operator new(std::size_t bytes) { return velt::tests::orThrow(velt::tests::newBlock(false, bytes)); }
void* operator new[](std::size_t bytes) { return velt::tests::orThrow(velt::tests::newBlock(true, bytes)); }
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return velt::tests::newBlock(false, bytes); }
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept { return velt::tests::newBlock(true, bytes); }
void* operator new(std::size_t bytes, std::align_val_t alignment) { return velt::tests::orThrow(velt::tests::newBlock(false, bytes, alignment)); }
void* operator new[](std::size_t bytes, std::align_val_t alignment) { return velt::tests::orThrow(velt::tests::newBlock(true, bytes, alignment)); }
void* operator new(std::size_t bytes, std::align_val_t alignment, const std::nothrow_t&) noexcept { return velt::tests::newBlock(false, bytes, alignment); }
void* operator new[](std::size_t bytes, std::align_val_t alignment, const std::nothrow_t&) noexcept { return velt::tests::newBlock(true, bytes, alignment); }
void operator delete(void* block) noexcept { velt::tests::deleteBlock(false, block); }
void operator delete[](void* block) noexcept { velt::tests::deleteBlock(true, block); }
void operator delete(void* block, std::size_t) noexcept { velt::tests::deleteBlock(false, block); }
void operator delete[](void* block, std::size_t) noexcept { velt::tests::deleteBlock(true, block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { velt::tests::deleteBlock(false, block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { velt::tests::deleteBlock(true, block); }
void operator delete(void* block, std::align_val_t) noexcept { velt::tests::deleteBlock(false, block); }
void operator delete[](void* block, std::align_val_t) noexcept { velt::tests::deleteBlock(true, block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { velt::tests::deleteBlock(false, block); }
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept { velt::tests::deleteBlock(true, block); }
void operator delete(void* block, std::align_val_t, const std::nothrow_t&) noexcept { velt::tests::deleteBlock(false, block); }
void operator delete[](void* block, std::align_val_t, const std::nothrow_t&) noexcept { velt::tests::deleteBlock(true, block); }
// clang-format on

#endif
