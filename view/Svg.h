#pragma once

// Pictures as SVG files.

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <unordered_set>

#include "view/Picture.h"

namespace velt::view {

enum class Background { Light, Dark };

struct SvgOptions {
  // What is shown, in the units of the space.
  Box window{};
  // Of the picture, in pixels; the height follows from the window.
  double width = 1200;
  Background background = Background::Light;
  // Shown in a color of their own, everything else pale. Records.
  std::unordered_set<std::uint32_t> highlighted{};
  // What an entity is called in the file ("A7"), so that other programs find it; empty for nothing.
  std::function<std::string(std::uint32_t)> nameOf{};
  std::string title{};
};

// How many pixels a unit of the space takes.
[[nodiscard]] double scaleOf(const SvgOptions& options);

// The window around everything, with a little room. A unit square for a picture of nothing.
[[nodiscard]] Box windowAround(const Box& extents);

// Failure shows in the stream's state. Requires a window with an area and a positive width.
void writeSvg(const Picture& picture, const SvgOptions& options, std::ostream& out);

}  // namespace velt::view
