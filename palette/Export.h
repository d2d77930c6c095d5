#pragma once

// VELT_PALETTE_EXPORT marks what libVeltPalette.so exports. Everything else in the library is hidden.

#define VELT_PALETTE_EXPORT __attribute__((visibility("default")))
