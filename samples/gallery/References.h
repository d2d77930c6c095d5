#pragma once

#include "samples/gallery/Exhibition.h"

namespace velt::samples {

// Draws what exhibits refer to: a layer, styles, blocks, another drawing, an image, a sheet of a document.
[[nodiscard]] References addReferences(DrawingBuilder& drawing);

}  // namespace velt::samples
