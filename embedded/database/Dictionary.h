#pragma once

// Dictionaries: objects of a drawing by name.

#include <cstdint>
#include <optional>
#include <string_view>

#include "embedded/database/Drawing.h"

namespace velt::database {

// The record that a DICTIONARY has under the name. Nothing when the record is no dictionary, has no such entry, or has
// one whose handle leads nowhere. Names are compared byte for byte.
[[nodiscard]] std::optional<std::uint32_t> dictionaryEntry(const Drawing& drawing, std::uint32_t dictionary,
                                                           std::string_view name);

// The dictionary of what others have attached to an object; nothing when it has none.
[[nodiscard]] std::optional<std::uint32_t> extensionDictionary(const Drawing& drawing, std::uint32_t record);

}  // namespace velt::database
