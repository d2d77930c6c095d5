#pragma once

// The rows that the classes of dimensions share, in families: a class takes those that mean something for it.

#include <span>

#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

// Of every dimension.
extern const std::span<const PropertyRow> dimensionRows;
// Of dimensions with arrowheads.
extern const std::span<const PropertyRow> arrowRows;
// Of those with one at each end.
extern const std::span<const PropertyRow> twoArrowRows;
// Of those with a single one.
extern const std::span<const PropertyRow> oneArrowRows;
// Of those whose dimension line has two halves.
extern const std::span<const PropertyRow> dimensionLineRows;
// Of those with extension lines.
extern const std::span<const PropertyRow> extensionLineRows;
// Of those that mark a center.
extern const std::span<const PropertyRow> centerMarkRows;
// Of those that measure a length.
extern const std::span<const PropertyRow> lengthUnitRows;
// Of those that measure an angle.
extern const std::span<const PropertyRow> angleUnitRows;
// Of those that can tell their length in a second unit.
extern const std::span<const PropertyRow> alternateRows;

}  // namespace velt::automation
