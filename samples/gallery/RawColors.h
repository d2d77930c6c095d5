#pragma once

// Colors as multileaders keep them: what kind of color it is in the highest byte, the color below.

namespace velt::samples {

inline constexpr int rawByBlock = static_cast<int>(0xC1000000U);
inline constexpr int rawNone = static_cast<int>(0xC8000000U);

// One of the numbered colors.
constexpr int rawColor(int number) {
  return static_cast<int>(0xC3000000U) + number;
}

}  // namespace velt::samples
