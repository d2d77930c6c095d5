#pragma once

#include <memory>
#include <string>

#include "embedded/database/Drawing.h"

namespace velt::tool {

// Opens a drawing, with progress on standard error. Throws dxf::Error.
std::unique_ptr<database::Drawing> openDrawing(const std::string& file);

}  // namespace velt::tool
