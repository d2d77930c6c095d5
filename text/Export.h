#pragma once

// VELT_PROPDATA_EXPORT marks what libVeltPropData.so exports. Everything else in the library is hidden.
//
// It stands in the lowest folder of the layer because every folder of the layer exports something. What carries it must
// be listed in tests/golden/exported_symbols.txt; a test compares the list with the library.

#define VELT_PROPDATA_EXPORT __attribute__((visibility("default")))
