// Colours as callers give them: as an object, by an index, or in words.
#pragma once

#include "embedded/automation/model/Value.h"
#include "host/database/VkCmColor.h"

namespace velt::automation {

/// An object that offers IVeltVkCmColor; a colour index, 0 for by block and 256 for by layer; or one of the names of
/// colours in any case, an index in digits, or red, green and blue from 0 to 255 with commas between them. Throws
/// Refusal for anything else, and for a colour that no entity can have.
[[nodiscard]] VkCmColor colorFrom(const Value& value);

}  // namespace velt::automation
