#pragma once

#include <memory>
#include <span>
#include <string>

#include "embedded/database/Drawing.h"
#include "palette/Palette.h"

namespace velt::tool {

// Stands for standard input where a drawing is read, and for standard output where one is written.
inline constexpr const char* standardStream = "-";

// Opens a drawing, or reads it from standard input, with progress on standard error. Throws dxf::Error.
std::unique_ptr<database::Drawing> openDrawing(const std::string& file);

// A selection of these entities with their rows, with progress on standard error. Throws palette::Error.
palette::Selection queried(std::span<const VkDbObjectId> entities);

// How the drawing itself says that numbers are written.
palette::NumberStyle numberStyleOf(const database::Drawing& drawing, bool isPrecise = false);

}  // namespace velt::tool
