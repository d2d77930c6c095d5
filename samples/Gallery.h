#pragma once

// The project's own gallery: one entity at least of every class.

#include <string>

namespace velt::samples {

// The bytes of the drawing, in millimetres, the same at every call. Each class of the automation model has an entity in
// it, each kind of hatch and of smoothed polyline, dimensions with variables of their own, and what these refer to:
// styles, an image, another drawing, a sheet with a viewport.
[[nodiscard]] std::string galleryDrawing();

}  // namespace velt::samples
