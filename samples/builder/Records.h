#pragma once

// How sections, records and lists of pairs begin in a drawing, whatever they hold.

#include <string_view>

#include "dxf/PairWriter.h"
#include "samples/builder/Pairs.h"

namespace velt::samples {

inline void write(dxf::PairWriter& out, const Pairs& pairs) {
  for (const RawPair& pair : pairs)
    out.verbatim(pair.code, pair.value);
}

inline void beginSection(dxf::PairWriter& out, std::string_view name) {
  out.verbatim(0, "SECTION");
  out.verbatim(2, name);
}

inline void endSection(dxf::PairWriter& out) {
  out.verbatim(0, "ENDSEC");
}

// An object, or the head of an entity.
inline void beginObject(dxf::PairWriter& out, std::string_view type, Handle handle, Handle owner) {
  out.verbatim(0, type);
  out.handle(5, handle);
  out.handle(330, owner);
}

}  // namespace velt::samples
