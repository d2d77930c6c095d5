#pragma once

// How each kind of entity is drawn. Whatever cannot be drawn is left out: none of these fails.

#include "embedded/database/Lens.h"
#include "view/Painter.h"

namespace velt::view::entities {

using database::Lens;

// --- Curves.cpp
void drawLine(Painter& painter, const Lens& entity, const Place& place);
// A circle, too.
void drawArc(Painter& painter, const Lens& entity, const Place& place);
void drawEllipse(Painter& painter, const Lens& entity, const Place& place);
void drawSpline(Painter& painter, const Lens& entity, const Place& place);
void drawRay(Painter& painter, const Lens& entity, const Place& place);
void drawXLine(Painter& painter, const Lens& entity, const Place& place);
// As the drawing says that points are seen: a dot, a cross, a circle ...
void drawPoint(Painter& painter, const Lens& entity, const Place& place);

// --- Polylines.cpp
void drawLightPolyline(Painter& painter, const Lens& entity, const Place& place);
// Meshes, too, as their edges.
void drawHeavyPolyline(Painter& painter, const Lens& entity, const Place& place);
void drawMultiline(Painter& painter, const Lens& entity, const Place& place);

// --- Hatches.cpp
void drawHatch(Painter& painter, const Lens& entity, const Place& place);

// --- Faces.cpp
void drawSolid(Painter& painter, const Lens& entity, const Place& place);
// As its visible edges.
void drawFace(Painter& painter, const Lens& entity, const Place& place);
void drawMesh(Painter& painter, const Lens& entity, const Place& place);

// --- Texts.cpp
void drawText(Painter& painter, const Lens& entity, const Place& place);
void drawAttribute(Painter& painter, const Lens& entity, const Place& place);
// By its tag; within blocks only what is the same for every reference.
void drawAttributeDefinition(Painter& painter, const Lens& entity, const Place& place);
void drawMText(Painter& painter, const Lens& entity, const Place& place);

// --- References.cpp
void drawInsert(Painter& painter, const Lens& entity, const Place& place);
// By its picture, a block; so is a table.
void drawDimension(Painter& painter, const Lens& entity, const Place& place);
void drawTable(Painter& painter, const Lens& entity, const Place& place);

// --- Notes.cpp
void drawLeader(Painter& painter, const Lens& entity, const Place& place);
void drawMultileader(Painter& painter, const Lens& entity, const Place& place);
void drawTolerance(Painter& painter, const Lens& entity, const Place& place);
// As a small square, since drawings do not hold the shape itself.
void drawShape(Painter& painter, const Lens& entity, const Place& place);

// --- Images.cpp
// A frame with the name of the file.
void drawImage(Painter& painter, const Lens& entity, const Place& place);
void drawUnderlay(Painter& painter, const Lens& entity, const Place& place);
void drawWipeout(Painter& painter, const Lens& entity, const Place& place);
void drawOleFrame(Painter& painter, const Lens& entity, const Place& place);

// --- Viewports.cpp
// Its frame, and what it shows of model space.
void drawViewport(Painter& painter, const Lens& entity, const Place& place);

}  // namespace velt::view::entities
