#include "host/platform/Memory.h"

#include "embedded/platform/Allocation.h"

void* _tqMalloc(std::size_t bytes) {
  return velt::platform::allocate(velt::platform::Heap::Host, bytes);
}

void _tqFree(void* block) {
  velt::platform::deallocate(block);
}
