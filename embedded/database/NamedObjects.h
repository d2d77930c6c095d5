#pragma once

// Names of what an entity refers to by its handle.

#include <cstdint>
#include <string>

#include "embedded/database/Drawing.h"

namespace velt::database {

// What a table calls the entry of that handle; empty for none.
[[nodiscard]] std::wstring entryName(const Drawing& drawing, const Table& table, std::uint64_t handle);

// What the dictionary that owns it calls an object, such as a style or an image; empty for none.
[[nodiscard]] std::wstring objectName(const Drawing& drawing, std::uint64_t handle);

}  // namespace velt::database
