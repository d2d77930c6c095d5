#pragma once

// The colors that have a name, by their color index. A palette shows such a color by its name, and a host takes the name
// where a color is written: both go by this list.

#include <array>
#include <cstdint>

namespace velt::automation {

inline constexpr std::int32_t byBlockIndex = 0;
inline constexpr std::int32_t byLayerIndex = 256;

struct NamedColor {
  std::int32_t index;
  const wchar_t* name;
};

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
