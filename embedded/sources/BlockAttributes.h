#pragma once

// The property source of block attributes: one row for each attribute that a block reference brings along.
//
// A row has the name of the attribute's tag (a second attribute of the same tag is "TAG (2)"), is described by the
// prompt that the block's definition has for the tag, and holds the attribute's text as the drawing has it, with its
// codes. A reference to an anonymous block that was made of a dynamic one takes the prompts from there when its own
// block has none. Read-only are constant attributes, and those of several lines, whose wording stands in an embedded
// object. Whether an attribute may be moved (its lock of the position) does not matter here.
// A value is refused when the reference or the attribute is on a locked layer. Setting the text that is there already
// changes nothing in the drawing.

#include "host/palette/IPropertySource.h"

namespace velt::sources {

// With one reference for the caller; null when memory is exhausted.
[[nodiscard]] IPropertySource* makeBlockAttributes();

}  // namespace velt::sources
