#pragma once

// The heap of that program, under the names that it has there.

#include <cstddef>

extern "C" {
void* drawing_allocate(std::size_t bytes);
void drawing_free(void* block);
}
