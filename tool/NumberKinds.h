#pragma once

// What a real number of a row means to people. The type names of a property tell it, and for a few properties the kind
// that the layer gives in place of a type name; rows hold either in the same field.

#include <algorithm>
#include <array>
#include <cstdint>

namespace velt::tool {

// In radians; people read and write degrees.
constexpr bool isAngle(std::int32_t customType) {
  constexpr std::array<std::int32_t, 3> codes = {543, /* end of an ellipse */ 508, /* of a hatch */ 513};
  return std::find(codes.begin(), codes.end(), customType) != codes.end();
}

// A factor or the like; decimal places of lengths mean nothing to it.
constexpr bool isWithoutUnits(std::int32_t customType) {
  constexpr std::array<std::int32_t, 3> codes = {544, /* scale of a hatch */ 519, /* of a line type */ 539};
  return std::find(codes.begin(), codes.end(), customType) != codes.end();
}

}  // namespace velt::tool
