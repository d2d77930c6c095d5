#pragma once

// Dictionaries: how a drawing finds objects by name.

#include <cstdint>
#include <optional>
#include <string_view>

#include "embedded/database/Drawing.h"

namespace velt::database {

// The record that a DICTIONARY has under the name. Nothing when the record is not a dictionary, has no such entry, or
// when the drawing has no object with the entry's handle. Names are compared byte for byte.
[[nodiscard]] std::optional<std::uint32_t> dictionaryEntry(const Drawing& drawing, std::uint32_t dictionary,
                                                           std::string_view name);

// The dictionary in which applications attach things to an object; nothing when it has none.
[[nodiscard]] std::optional<std::uint32_t> extensionDictionary(const Drawing& drawing, std::uint32_t record);

}  // namespace velt::database
