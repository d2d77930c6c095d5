#pragma once

// The property source of extended data: one row for each value that an application has attached to an entity.
//
// A row has the name of the application and the value's place among its values, counted from 1 ("ACME 1"); the braces
// that group values are no values. Texts, reals (distances and factors too) and integers are what they are and may be
// set; so may the name of a layer, which must be one that the drawing has. Handles and binary chunks are shown as
// hexadecimal texts and points as "x,y,z", read-only. Left out is what the CAD program itself keeps at entities: the
// applications whose names begin with ACAD or AcDb, the colors of gradients, and hyperlinks, which have a row of their
// own.
// A value is refused when the entity is on a locked layer, and a text that is longer than extended data can hold.
// Setting the value that is there already changes nothing in the drawing.

#include "host/palette/IPropertySource.h"

namespace velt::sources {

// With one reference for the caller; null when memory is exhausted.
[[nodiscard]] IPropertySource* makeExtendedData();

}  // namespace velt::sources
