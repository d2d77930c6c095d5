#pragma once

// The host's heap: the blocks of shared vectors and the property-list cache are allocated from it, because layer and
// host free each other's.
//
// Threads: vectors may be destroyed on any thread, so both functions may be called on any thread.

#include <cstddef>

extern "C" {
// Null when memory is exhausted.
void* _tqMalloc(std::size_t bytes);
// Does nothing for null.
void _tqFree(void* block);
}
