#include "embedded/platform/GeneralHeap.h"

#ifdef VELT_WITH_MIMALLOC
#include <mimalloc.h>
#else
#include <malloc.h>

#include <cstdlib>
#endif

namespace velt::platform {

#ifdef VELT_WITH_MIMALLOC

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
