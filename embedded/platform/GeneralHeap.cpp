#include "embedded/platform/GeneralHeap.h"

// Sanitizers may also be asked for by the compiler's flags alone.
#if defined(VELT_WITH_MIMALLOC) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define VELT_SPARES_BLOCKS 1
#include <mimalloc.h>
#else
#define VELT_SPARES_BLOCKS 0
#include <malloc.h>

#include <cstdlib>
#endif

namespace velt::platform {

#if VELT_SPARES_BLOCKS

bool generalHeap::mayBeSpared() noexcept {
  return true;
}

void* generalHeap::take(std::size_t bytes) noexcept {
  return mi_malloc(bytes);
}

void* generalHeap::takeZeroed(std::size_t bytes) noexcept {
  return mi_zalloc(bytes);
}

void generalHeap::giveBack(void* block) noexcept {
  mi_free(block);
}

std::size_t generalHeap::sizeOf(const void* block) noexcept {
  return mi_usable_size(block);
}

generalHeap::NothingSpared::NothingSpared() noexcept : usualDelay_(mi_option_get(mi_option_decommit_delay)) {
  mi_option_set(mi_option_decommit_delay, 0);
  mi_collect(true);
}

generalHeap::NothingSpared::~NothingSpared() {
  mi_option_set(mi_option_decommit_delay, usualDelay_);
}

#else

bool generalHeap::mayBeSpared() noexcept {
  return false;
}

void* generalHeap::take(std::size_t bytes) noexcept {
  return std::malloc(bytes);
}

void* generalHeap::takeZeroed(std::size_t bytes) noexcept {
  return std::calloc(1, bytes);
}

void generalHeap::giveBack(void* block) noexcept {
  std::free(block);
}

std::size_t generalHeap::sizeOf(const void* block) noexcept {
  return malloc_usable_size(const_cast<void*>(block));
}

generalHeap::NothingSpared::NothingSpared() noexcept : usualDelay_(0) {
  malloc_trim(0);
}

generalHeap::NothingSpared::~NothingSpared() = default;

#endif

}  // namespace velt::platform
