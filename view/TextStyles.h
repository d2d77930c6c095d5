#pragma once

// The text styles of a drawing, as far as they say what texts look like.

#include <cstdint>
#include <string>
#include <string_view>

#include "embedded/database/Drawing.h"

namespace velt::view {

struct TextStyle {
  // Empty for a font of strokes and for one that is not told.
  std::wstring family{};
  double widthFactor = 1;
  // In radians.
  double oblique = 0;
  bool isBold = false;
  bool isItalic = false;
};

// One that the drawing lacks looks plain.
[[nodiscard]] TextStyle textStyleNamed(const database::Drawing& drawing, std::wstring_view name);
[[nodiscard]] TextStyle textStyleOfHandle(const database::Drawing& drawing, std::uint64_t handle);

}  // namespace velt::view
