#pragma once

// Colors as callers give them: as an object, by an index, or in words.

#include "embedded/automation/model/Value.h"
#include "host/database/VkCmColor.h"

namespace velt::automation {

// An object that offers IVeltVkCmColor; a color index, 0 for by block and 256 for by layer; or one of the names of
// colors in any case, an index in digits, or red, green and blue from 0 to 255 with commas between them. Throws
// Refusal for anything else, and for a color that no entity can have.
[[nodiscard]] VkCmColor colorFrom(const Value& value);

}  // namespace velt::automation
