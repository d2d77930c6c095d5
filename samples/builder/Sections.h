#pragma once

// Writes the sections of a drawing, each as a whole.

#include "samples/builder/Parts.h"

namespace velt::samples {

void writeHeader(dxf::PairWriter& out, const Parts& parts);
void writeClasses(dxf::PairWriter& out);
void writeTables(dxf::PairWriter& out, const Parts& parts);
// The definitions; what stands in model and paper space follows in a section of its own.
void writeBlocks(dxf::PairWriter& out, const Parts& parts);
void writeEntities(dxf::PairWriter& out, const Parts& parts);
// Dictionaries, layouts, and what stands in the dictionaries.
void writeObjects(dxf::PairWriter& out, const Parts& parts);

}  // namespace velt::samples
