#include <cmath>
#include <limits>
#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/polylines/PolylineShape.h"
#include "embedded/automation/polylines/VertexEditor.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace lightPolylines {
namespace {

using platform::Category;

constexpr const char* polyline = "AcDbPolyline";

// The coordinates of all vertices in the plane of the polyline, x and y in turn.
std::vector<double> getVertices(const Subject& subject) {
  std::vector<double> coordinates;
  for (const PolylineVertex& vertex : polylineShape(subject).vertices) {
    coordinates.push_back(vertex.place.point.x);
    coordinates.push_back(vertex.place.point.y);
  }
  return coordinates;
}

// Three numbers come as a point, and are refused: a vertex has two.
void putVertices(const Subject& subject, const std::vector<double>& coordinates) {
  putVertexPlaces(subject, coordinates);
}

// --- vertices as elements: those of vertex n have the numbers 4n to 4n + 3 ---

// Palettes know the third and fourth element of a vertex as the widths of its segment.
constexpr const wchar_t* vertexLabels[] = {L"Vertex X", L"Vertex Y", L"Start segment width",
                                           L"End segment width"};
constexpr std::size_t elementsOfVertex = 4;

std::size_t vertexCount(const Subject& subject, const PropertyRow&) {
  return polylineShape(subject).vertices.size();
}

double getVertexElement(const Subject& subject, const PropertyRow&, std::size_t element) {
  const PolylineVertex& vertex = polylineShape(subject).vertices[element / elementsOfVertex];
  const double elements[] = {vertex.place.point.x, vertex.place.point.y, vertex.startWidth, vertex.endWidth};
  return elements[element % elementsOfVertex];
}

void putVertexElement(const Subject& subject, const PropertyRow&, std::size_t element, double value) {
  constexpr VertexPart parts[] = {VertexPart::X, VertexPart::Y, VertexPart::StartWidth, VertexPart::EndWidth};
  putVertexPart(subject, element / elementsOfVertex, parts[element % elementsOfVertex], value);
}

constexpr ElementAccess vertexElements = {
    .labels = vertexLabels,
    .grouping = 1,
    .groups = vertexCount,
    .get = getVertexElement,
    .put = putVertexElement,
};

constexpr Access vertices() {
  Access made = computed<getVertices, putVertices>();
  made.elements = &vertexElements;
  return made;
}

// --- the whole ---

// Not a number where the segments differ: no width can be meant by it, so whatever is put is another value.
double getConstantWidth(const Subject& subject) {
  return polylineShape(subject).width().value_or(std::numeric_limits<double>::quiet_NaN());
}

void putConstantWidth(const Subject& subject, const double& width) {
  putCommonWidth(subject, width);
}

double getArea(const Subject& subject) {
  const PolylineShape& shape = polylineShape(subject);
  return std::abs(signedPathArea(shape.path(), shape.closed));
}

double getLength(const Subject& subject) {
  const PolylineShape& shape = polylineShape(subject);
  return pathLength(shape.path(), shape.closed);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                   label                   type             category                   access                                                                       writability                             choices        weight help
  {  1, L"Thickness",          L"Thickness",           types::distance, Category::General,         storedReal(39, polyline).keepingShape(),                                     writable,                               Choices::None,  90,   L"How far the polyline is pulled along its normal."},
  {  2, L"Vertex",             L"Vertex",              VT_VARIANT,      Category::Geometry,        vertices(),                                                                  writable,                               Choices::None, 110,   L"The vertices, in the plane of the polyline."},
  {  3, L"ConstantWidth",      L"Global width",        types::distance, Category::Geometry,        computed<getConstantWidth, putConstantWidth>().notNegative().keepingShape(), writable,                               Choices::None, 120,   L"Width of all segments, none where they differ; putting it takes away what a segment has of its own."},
  {  4, L"Elevation",          L"Elevation",           types::distance, Category::Geometry,        storedReal(38, polyline),                                                    writable,                               Choices::None, 130,   L"Height of the polyline's plane over the origin, along its normal."},
  {  5, L"Area",               L"Area",                VT_R8,           Category::Geometry,        computed<getArea>(),                                                         readOnly(reasons::followsFromVertices), Choices::None, 140,   L"Of an open polyline: as if a straight line closed it."},
  {  6, L"Length",             L"Length",              types::distance, Category::Geometry,        computed<getLength>(),                                                       readOnly(reasons::followsFromVertices), Choices::None, 150,   L"Along all segments."},
  {  7, L"Closed",             L"Closed",              VT_BOOL,         Category::Misc,            storedBit(70, polyline, 1),                                                  writable,                               Choices::None, 160,   L"Whether a segment leads from the last vertex back to the first."},
  {  8, L"LinetypeGeneration", L"Linetype generation", VT_BOOL,         Category::Misc,            storedBit(70, polyline, 128).keepingShape(),                                 writable,                               Choices::None, 170,   L"Whether the pattern of the line type runs on through the vertices."},
  {  9, L"Normal",             L"Normal",              VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),                                                  readOnly(reasons::verticesWouldFollow), Choices::None, 180,   L"Upright on the plane of the polyline."},
};
// clang-format on

}  // namespace
}  // namespace lightPolylines

constinit const AutomationClass classes::VeltLWPolyline = {
    .clsid = CLSID_VeltLWPolyline,
    .name = L"VeltLWPolyline",
    .label = L"Polyline",
    .dxfName = "LWPOLYLINE",
    .help = L"A flat polyline of lines and arcs.",
    .general = &entityRows,
    .rows = lightPolylines::rows,
};

}  // namespace velt::automation
