#pragma once

// The colors that have a name, by their color index. A palette shows such a color by its name, and a host takes the
// name where a color is written: both go by this list.

#include <array>
#include <cstdint>

namespace velt::automation {

// The indexes that stand for the color of the block reference, and of the layer.
inline constexpr std::int32_t byBlockIndex = 0;
inline constexpr std::int32_t byLayerIndex = 256;

// A color and its name.
struct NamedColor {
  // The color index.
  std::int32_t index;
  // In English, as users read and write it.
  const wchar_t* name;
};

// All of them.
// clang-format off
inline constexpr std::array<NamedColor, 9> colorNames = {{
    // index        name
    {byLayerIndex,  L"ByLayer"},
    {byBlockIndex,  L"ByBlock"},
    {1,             L"Red"},
    {2,             L"Yellow"},
    {3,             L"Green"},
    {4,             L"Cyan"},
    {5,             L"Blue"},
    {6,             L"Magenta"},
    {7,             L"White"},
}};
// clang-format on

}  // namespace velt::automation
