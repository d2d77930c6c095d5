#pragma once

// What hangs in the gallery, by matter.

#include <string>

#include "samples/gallery/Exhibition.h"

namespace velt::samples {

// Lines, circles, texts, a block reference: whatever the builder has a function for.
void addPlainEntities(Exhibition& gallery);
// Flat pieces with three or four corners.
void addFaces(Exhibition& gallery);
// Endless lines, splines, a line of several.
void addCurves(Exhibition& gallery);
// A shape, leaders of all kinds, a tolerance frame.
void addNotes(Exhibition& gallery);
void addImages(Exhibition& gallery);
void addMesh(Exhibition& gallery);
void addUnderlay(Exhibition& gallery);
// A body whose text the drawing does not hold.
void addBody(Exhibition& gallery);
// A reference to another drawing.
void addSite(Exhibition& gallery);
void addTable(Exhibition& gallery);
// One of each kind, all of which show the block of that name.
void addDimensions(Exhibition& gallery, const std::string& picture);
// A region and a solid, with the modeller's text.
void addModels(Exhibition& gallery);
void addHatches(Exhibition& gallery);
// Polylines in pieces: in the plane, in space, and as meshes.
void addPolylines(Exhibition& gallery);
// On the sheet.
void addViewport(Exhibition& gallery);
// Its picture is nobody else's, and looks as the style and the points say.
void addDrawnDimension(Exhibition& gallery);

}  // namespace velt::samples
