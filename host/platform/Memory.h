#pragma once

// The host's heap: the blocks of shared vectors and the property-list cache are allocated from it, because layer and
// host free each other's.
//
// Threads: vectors may be destroyed on any thread, so both functions may be called on any thread.

#include <cstddef>

extern "C" {
// Called by: every operation that takes or makes lists.
// Null when memory is exhausted: the crash recorder gets status 6, and the operation ends with its failure value.
void* _tqMalloc(std::size_t bytes);
// Does nothing for null.
void _tqFree(void* block);
}
