#include <initializer_list>

#include "samples/gallery/Exhibits.h"

namespace velt::samples {
namespace {

// Flags of polylines (code 70).
constexpr int closed = 1;
constexpr int curveFitted = 2;
constexpr int splineFitted = 4;
constexpr int inSpace = 8;
constexpr int meshed = 16;
constexpr int closedAcross = 32;
constexpr int ofFaces = 64;

// Flags of vertices (code 70).
constexpr int addedByCurve = 1;
constexpr int hasTangent = 2;
constexpr int addedBySpline = 8;
constexpr int ofFrame = 16;
constexpr int vertexInSpace = 32;
constexpr int vertexOfMesh = 64;
constexpr int vertexOfFaces = 128;

// What kind of smooth line or surface it is (code 75).
constexpr int quadratic = 5;
constexpr int cubic = 6;

// A polyline in pieces: its head, its vertices, and the end of the sequence.
void addSequence(Exhibition& gallery, const Pairs& head, std::initializer_list<Pairs> vertices) {
  const Handle handle = gallery.model.raw("POLYLINE", head, gallery.style);
  for (const Pairs& vertex : vertices)
    gallery.model.raw("VERTEX", vertex, gallery.style, handle);
  gallery.model.raw("SEQEND", {}, gallery.style, handle);
}

Pairs head(std::string_view kind, int elevation, int flags) {
  return {subclass(kind), {66, 1}, point(10, 0, 0, elevation), {70, flags}};
}

// In the plane, with what else there is to it.
Pairs flatVertex(int x, int y, const Pairs& more = {}) {
  return {subclass("AcDbVertex"), subclass("AcDb2dVertex"), {30, 0}, flatPoint(10, x, y), more};
}
Pairs spatialVertex(int x, int y, int z, int flags) {
  return {subclass("AcDbVertex"), subclass("AcDb3dPolylineVertex"), point(10, x, y, z), {70, flags}};
}
Pairs meshVertex(int x, int y, int z) {
  return {subclass("AcDbVertex"), subclass("AcDbPolygonMeshVertex"), point(10, x, y, z), {70, vertexOfMesh}};
}
Pairs cornerOfFaces(int x, int y, int z) {
  constexpr int flags = vertexOfFaces + vertexOfMesh;
  return {subclass("AcDbVertex"), subclass("AcDbPolyFaceMeshVertex"), point(10, x, y, z), {70, flags}};
}
// Of three corners by their numbers, from 1.
Pairs face(int a, int b, int c) {
  return {subclass("AcDbFaceRecord"), point(10, 0, 0, 0), {70, vertexOfFaces}, {71, a}, {72, b}, {73, c}};
}

Pairs bulge(double tangent) {
  return {42, tangent};
}
Pairs flags(int all) {
  return {70, all};
}
Pairs tangentAt(int degrees) {
  return {flags(hasTangent), {50, degrees}};
}

void addFlatOnes(Exhibition& gallery) {
  // Closed, above the plane, with widths that begin and end otherwise.
  addSequence(gallery, {head("AcDb2dPolyline", 3, closed), {40, 0.5}, {41, 0.5}},
              {
                  flatVertex(0, 100, {42, 1}),
                  flatVertex(10, 100, {{40, 1}, {41, 2}}),
                  flatVertex(10, 110),
              });
  // A smooth curve through two points, with the vertex that the fitting added.
  addSequence(gallery, head("AcDb2dPolyline", 0, curveFitted),
              {
                  flatVertex(20, 100, {bulge(0.2), tangentAt(45)}),
                  flatVertex(24, 106, {bulge(-0.2), flags(addedByCurve)}),
                  flatVertex(30, 110, tangentAt(45)),
              });
  // A smooth curve beside three points, with the vertices that the fitting added.
  addSequence(gallery, {head("AcDb2dPolyline", 0, splineFitted), {75, cubic}},
              {
                  flatVertex(40, 100, flags(ofFrame)),
                  flatVertex(45, 110, flags(ofFrame)),
                  flatVertex(50, 100, flags(ofFrame)),
                  flatVertex(40, 100, flags(addedBySpline)),
                  flatVertex(45, 105, flags(addedBySpline)),
                  flatVertex(50, 100, flags(addedBySpline)),
              });
}

void addSpatialOnes(Exhibition& gallery) {
  addSequence(gallery, head("AcDb3dPolyline", 0, inSpace + closed),
              {
                  spatialVertex(60, 100, 0, vertexInSpace),
                  spatialVertex(63, 104, 0, vertexInSpace),
                  spatialVertex(63, 104, 12, vertexInSpace),
              });
  addSequence(gallery, {head("AcDb3dPolyline", 0, inSpace + splineFitted), {75, quadratic}},
              {
                  spatialVertex(70, 100, 0, vertexInSpace + ofFrame),
                  spatialVertex(75, 105, 5, vertexInSpace + ofFrame),
                  spatialVertex(80, 100, 0, vertexInSpace + ofFrame),
                  spatialVertex(70, 100, 0, vertexInSpace + addedBySpline),
                  spatialVertex(80, 100, 0, vertexInSpace + addedBySpline),
              });
}

void addMeshes(Exhibition& gallery) {
  // Two rows of three, closed along one side.
  addSequence(gallery, {head("AcDbPolygonMesh", 0, meshed + closedAcross), {71, 2}, {72, 3}},
              {
                  meshVertex(90, 100, 0),
                  meshVertex(95, 100, 1),
                  meshVertex(100, 100, 0),
                  meshVertex(90, 105, 0),
                  meshVertex(95, 105, 1),
                  meshVertex(100, 105, 0),
              });
  // Four corners, two faces.
  addSequence(gallery, {head("AcDbPolyFaceMesh", 0, ofFaces), {71, 4}, {72, 2}},
              {
                  cornerOfFaces(110, 100, 0),
                  cornerOfFaces(120, 100, 0),
                  cornerOfFaces(120, 110, 0),
                  cornerOfFaces(110, 110, 5),
                  face(1, 2, 3),
                  face(1, 3, 4),
              });
}

}  // namespace

void addPolylines(Exhibition& gallery) {
  addFlatOnes(gallery);
  addSpatialOnes(gallery);
  addMeshes(gallery);
}

}  // namespace velt::samples
