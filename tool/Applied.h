#pragma once

// What one assignment of `veltprops set` did.

#include <vector>

#include "palette/Palette.h"
#include "tool/Assignment.h"

namespace velt::tool {

struct Applied {
  Assignment assignment{};
  // Of these entities the outcome tells.
  std::vector<VkDbObjectId> entities{};
  palette::Report outcome{};
  // A plug-in has taken the value and keeps it somewhere else than in the drawing.
  bool isKeptOutside = false;
};

}  // namespace velt::tool
