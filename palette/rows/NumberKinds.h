#pragma once

// What a real number of a row means to people. The type names of a property tell it, and for a few properties the kind
// that the layer gives in place of a type name; rows hold either in the same field.

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
