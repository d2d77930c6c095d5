#pragma once

// What the real number of a row means to people. The row's kind tells it: that of the property's declared type or,
// for a few properties, the one that the layer settles when it reads the value.

#include <algorithm>
#include <array>
#include <cstdint>

#include "propdata/VeltPropData.h"

namespace velt::palette {

// In radians; people read and write degrees.
constexpr bool isAngle(std::int32_t customType) {
  constexpr std::array<std::int32_t, 3> kinds = {PropertyKind::angle, PropertyKind::ellipseEndAngle,
                                                 PropertyKind::hatchAngle};
  return std::find(kinds.begin(), kinds.end(), customType) != kinds.end();
}

// A factor or the like; decimal places of lengths mean nothing to it.
constexpr bool isWithoutUnits(std::int32_t customType) {
  constexpr std::array<std::int32_t, 3> kinds = {PropertyKind::noUnits, PropertyKind::hatchScale,
                                                 PropertyKind::entityLinetypeScale};
  return std::find(kinds.begin(), kinds.end(), customType) != kinds.end();
}

}  // namespace velt::palette
