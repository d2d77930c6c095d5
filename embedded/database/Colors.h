#pragma once

// Colors as drawings write them (group codes 62, 420 and 430), and as the host's color class holds them.

#include <cstdint>

#include "embedded/database/Lens.h"
#include "host/database/VkCmColor.h"

namespace velt::database {

inline constexpr std::uint32_t colorByLayer = 0xC0000000;
inline constexpr std::uint32_t colorByBlock = 0xC1000000;

// `index` is one of 1 to 255.
[[nodiscard]] constexpr std::uint32_t colorOfIndex(std::uint32_t index) {
  return 0xC3000000 | (index & 0xFF);
}

// Red, green and blue in the lower three bytes; what stands above them is left out.
[[nodiscard]] constexpr std::uint32_t colorOfRgb(std::uint32_t rgb) {
  return 0xC2000000 | (rgb & 0xFFFFFF);
}

// A true color (420) goes before an index (62), a name (430, "book$color") goes with either. Without any of them, and
// with an index that means nothing, the entity is colored by its layer.
[[nodiscard]] VkCmColor entityColor(const Lens& entity);

// Writes a color that is by layer, by block, an index or a true color, and takes away what is left of the one before.
// False, and nothing changed, for any other value, and for a record without the part that entities have in common.
bool setEntityColor(Drawing& drawing, std::uint32_t record, const VkCmColor& color);

// The same for a layer. A negative index only says that the layer is off. A layer without a usable one has color 7.
[[nodiscard]] VkCmColor layerColor(const Lens& layer);

}  // namespace velt::database
