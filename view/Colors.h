#pragma once

// From the colors of drawings to what is seen.

#include <cstdint>

#include "view/Picture.h"

namespace velt::view {

// Of a color index from 1 to 255: 7 is the foreground; every other number is black.
[[nodiscard]] Ink inkOfIndex(std::uint32_t index);

// Red, green and blue in the lower three bytes.
[[nodiscard]] constexpr Ink inkOfRgb(std::uint32_t rgb) {
  return {Ink::Kind::Color, static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
          static_cast<std::uint8_t>(rgb)};
}

// Half of the one and half of the other; of the foreground, a middle grey counts.
[[nodiscard]] Ink mixed(const Ink& one, const Ink& other);

}  // namespace velt::view
