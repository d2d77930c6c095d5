#pragma once

// What velt-host-check asks of a host that it loads from a shared object: nothing but the symbols of the layer, and if the
// host wants to open a document before it is checked, this function.

#include <cstddef>

extern "C" {
// Opens a document that is named on the command line, and keeps it open. Writes the ids of its entities, as many as there
// is room for, and answers how many there are. A failure is negative; `message` has room for `messageSize` bytes, and gets
// a text in UTF-8 that tells why.
long veltOpenForCheck(const char* document, long* oldIds, std::size_t capacity, char* message,
                      std::size_t messageSize);
}
