#pragma once

// The stored picture of a dimension: a block, which the drawing shows in place of what the style and the points say.
//
// A put that the picture cannot follow would leave a drawing that contradicts itself. So rows of dimensions name one of
// these obstacles; there is none where a put leaves the picture as it should be.
// Colors and line weights are followed where it can be told with certainty what is what (see PictureParts.h).
// Threads: those of the drawing; what is known of the entity asked last is kept for each thread.

#include "embedded/automation/dimensions/StyleAccess.h"
#include "embedded/automation/model/PropertyTable.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// For what every picture shows.
extern const Obstacle drawnInPicture;
// For alternate units.
extern const Obstacle drawnWithAlternateUnits;
// For tolerances, which a frame alone does not show.
extern const Obstacle drawnWithTolerances;
// For extension lines that all have one length.
extern const Obstacle drawnWithFixedLength;
// For fractions of the measurement.
extern const Obstacle drawnWithFractions;
// For what tolerances and fractions have in common.
extern const Obstacle drawnWithSmallText;
// For the color of texts, where the picture cannot follow it.
extern const Obstacle drawnWithUnknownText;
// For the colors and weights of lines, where the picture cannot follow them.
extern const Obstacle drawnWithUnknownLines;

// Puts of variables that the picture follows; they change both. Not for a dimension that the obstacle stands for.

void putTextColor(const Subject& dimension, const PropertyRow& row, const Value& value);
void putDimensionLineColor(const Subject& dimension, const PropertyRow& row, const Value& value);
void putDimensionLineWeight(const Subject& dimension, const PropertyRow& row, const Value& value);
void putExtensionLineColor(const Subject& dimension, const PropertyRow& row, const Value& value);
void putExtensionLineWeight(const Subject& dimension, const PropertyRow& row, const Value& value);

// The access to a variable of the style that the picture follows.
constexpr Access followedBy(Access variable, Putter put) {
  variable.put = put;
  return variable;
}

}  // namespace velt::automation
