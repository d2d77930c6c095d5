#pragma once

// Dynamic blocks. A reference whose parameters differ from those of the definition names an anonymous block that was
// made for it; where that came from is written only in extended data and dictionaries.

#include <cstdint>

#include "embedded/database/Drawing.h"

namespace velt::database {

// The block that an INSERT names; null when the drawing has no such block.
[[nodiscard]] const TableEntry* referredBlock(const Drawing& drawing, std::uint32_t insert);

// The dynamic definition from which the referred block was made: the one that the block's record names, else the one
// that the reference's own dictionary names. Null when neither names one, or it is the referred block itself.
[[nodiscard]] const TableEntry* originalBlock(const Drawing& drawing, std::uint32_t insert);

// Whether the block is the definition of a dynamic one: it has parameters and actions.
[[nodiscard]] bool isEnhancedDefinition(const Drawing& drawing, const TableEntry& block);

}  // namespace velt::database
