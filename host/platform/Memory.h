#pragma once

// The host's heap.

#include <cstddef>

extern "C" {
void* _tqMalloc(std::size_t bytes);  // null when memory is exhausted
void _tqFree(void* block);           // null is allowed
}
