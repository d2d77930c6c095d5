#pragma once

// Dynamic blocks: a reference whose parameters differ from the definition's refers to an anonymous block that was made
// for it, and only traces of the definition are left in the file.

#include <cstdint>

#include "embedded/database/Drawing.h"

namespace velt::database {

// The block that an INSERT names; null when the drawing has no such block.
[[nodiscard]] const TableEntry* referredBlock(const Drawing& drawing, std::uint32_t insert);

// The dynamic definition that the referred block was made from: as the block's record tells, else as the reference's
// own dictionary tells. Null when neither does, and when it is the referred block itself.
[[nodiscard]] const TableEntry* originalBlock(const Drawing& drawing, std::uint32_t insert);

// The block has parameters and actions.
[[nodiscard]] bool isEnhancedDefinition(const Drawing& drawing, const TableEntry& block);

}  // namespace velt::database
