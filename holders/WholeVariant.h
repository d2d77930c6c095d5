#pragma once

// Makes a VARIANT that is written as a whole.
//
// Who sets the tag of a VARIANT and then its value, and passes or copies it at once, makes the processor wait for both
// before it can read them together: as long as twenty instructions take. A query passes and copies two VARIANTs for every
// value that it reads.

#include <cstdint>
#include <cstring>

#include "host/com/Variant.h"

namespace velt::holders {

// `bits`: what the member of that type holds, from its lowest byte on.
inline VARIANT wholeVariant(VARTYPE type, std::uint64_t bits) {
  using Words [[gnu::vector_size(16)]] = std::uint64_t;
  const Words words = {type, bits};
  VARIANT variant;
  variant.brecVal.pRecInfo = nullptr;
  std::memcpy(&variant, &words, sizeof words);
  return variant;
}

}  // namespace velt::holders
