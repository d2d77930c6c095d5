#pragma once

// The marker of what leaves libVeltPropData.so. Everything else in the library is hidden.
//
// It stands in the lowest folder of the layer because every folder of the layer exports something. A declaration
// that carries it must be listed in tests/golden/exported_symbols.txt; a test compares the list with the library.

#define VELT_PROPDATA_EXPORT __attribute__((visibility("default")))
