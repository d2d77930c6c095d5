#pragma once

// The stored picture of a dimension: a block, which the drawing shows in place of what the style and the points say.
//
// A put that the picture cannot follow would leave a drawing that contradicts itself. So rows of dimensions name one of
// these obstacles; each gives null where a put leaves the picture as it should be, else why the row is read-only there.
// Colors and line weights are followed where it can be told with certainty what is what (see PictureParts.h).
// Threads: those of the drawing; what is known of the entity asked last is kept for each thread.

#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/model/PropertyTable.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// Of what every picture shows.
const wchar_t* drawnInPicture(const Subject& dimension, const PropertyRow& row);
// Of alternate units.
const wchar_t* drawnWithAlternateUnits(const Subject& dimension, const PropertyRow& row);
// Of tolerances, which a frame alone does not show.
const wchar_t* drawnWithTolerances(const Subject& dimension, const PropertyRow& row);
// Of extension lines that all have one length.
const wchar_t* drawnWithFixedLength(const Subject& dimension, const PropertyRow& row);
// Of fractions of the measurement.
const wchar_t* drawnWithFractions(const Subject& dimension, const PropertyRow& row);
// Of what tolerances and fractions have in common.
const wchar_t* drawnWithSmallText(const Subject& dimension, const PropertyRow& row);
// Of the color of texts, where the picture cannot follow it.
const wchar_t* drawnWithUnknownText(const Subject& dimension, const PropertyRow& row);
// Of the colors and weights of lines, where the picture cannot follow them.
const wchar_t* drawnWithUnknownLines(const Subject& dimension, const PropertyRow& row);

// Puts of such variables, with what the picture shows of them. Not for a dimension where there is an obstacle.

void putTextColor(const Subject& dimension, const PropertyRow& row, const Value& value);
void putDimensionLineColor(const Subject& dimension, const PropertyRow& row, const Value& value);
void putDimensionLineWeight(const Subject& dimension, const PropertyRow& row, const Value& value);
void putExtensionLineColor(const Subject& dimension, const PropertyRow& row, const Value& value);
void putExtensionLineWeight(const Subject& dimension, const PropertyRow& row, const Value& value);

// A variable of the style that the picture follows.
constexpr Access followedBy(Access variable, Putter put,
                            const wchar_t* (*obstacle)(const Subject&, const PropertyRow&)) {
  variable.put = put;
  return variable.refusedWhere(obstacle);
}

}  // namespace velt::automation
