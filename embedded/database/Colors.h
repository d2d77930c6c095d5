#pragma once

// From the colors that drawings write (group codes 62, 420 and 430) to the host's color class, and back.

#include <cstdint>
#include <limits>
#include <optional>

#include "embedded/database/Lens.h"
#include "host/database/VkCmColor.h"

namespace velt::database {

// The byte that says what kind of color the others tell of.
inline constexpr std::uint32_t colorMethodMask = 0xFF000000;
inline constexpr std::uint32_t colorByLayer = 0xC0000000;
inline constexpr std::uint32_t colorByBlock = 0xC1000000;

// `index` is one of 1 to 255.
[[nodiscard]] constexpr std::uint32_t colorOfIndex(std::uint32_t index) {
  return 0xC3000000 | (index & 0xFF);
}

// Red, green and blue stand in the lower three bytes of `rgb`; its highest byte is ignored.
[[nodiscard]] constexpr std::uint32_t colorOfRgb(std::uint32_t rgb) {
  return 0xC2000000 | (rgb & 0xFFFFFF);
}

// What a drawing stores for a color, with a sign or without. Nothing for a number of more than 32 bits, which no color
// has.
[[nodiscard]] constexpr std::optional<std::uint32_t> colorNumber(std::int64_t stored) {
  const bool fits = stored >= std::numeric_limits<std::int32_t>::min()
                    && stored <= std::numeric_limits<std::uint32_t>::max();
  return fits ? std::optional(static_cast<std::uint32_t>(stored)) : std::nullopt;
}

// A true color (420) counts before an index (62); a name (430, "book$color") is added to either. An entity with neither
// of the two, or with an index that is not a color, is colored by its layer.
[[nodiscard]] VkCmColor entityColor(const Lens& entity);

// Writes a color that is by layer, by block, an index or a true color, and removes what else the old one had stored.
// False, and changes nothing, for any other value and for a record without the part that entities have in common.
bool setEntityColor(Drawing& drawing, std::uint32_t record, const VkCmColor& color);

// The color of a layer, by the same rules. A negative index only says that the layer is off. Without an index that is a
// color, it is color 7.
[[nodiscard]] VkCmColor layerColor(const Lens& layer);
[[nodiscard]] VkCmColor defaultLayerColor();

}  // namespace velt::database
