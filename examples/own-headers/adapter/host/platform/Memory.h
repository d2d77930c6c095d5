#pragma once

// The layer's heap is the program's, under other names: inline, so that nothing is left of ours.

#include "examples/own-headers/DrawingMemory.h"

inline void* _tqMalloc(std::size_t bytes) {
  return drawing_allocate(bytes);
}
inline void _tqFree(void* block) {
  drawing_free(block);
}
