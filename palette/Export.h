#pragma once

// The marker of what leaves libVeltPalette.so. Everything else in the library is hidden.

#define VELT_PALETTE_EXPORT __attribute__((visibility("default")))
