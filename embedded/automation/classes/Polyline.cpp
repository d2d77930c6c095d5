#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/BulgePath.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/polylines/HeavyVertexEditor.h"
#include "embedded/automation/polylines/PolylineTypes.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace polylines {
namespace {

using platform::Category;

constexpr const char* polyline = "AcDb2dPolyline";

// Whatever none of the other kinds takes.
bool isFlat(const database::Drawing& drawing, std::uint32_t record) {
  constexpr std::int64_t otherKinds = 8 | 16 | 64;
  return (database::Lens(drawing, record).integer(70, "*", 0) & otherKinds) == 0;
}

// The coordinates of all vertices in the plane of the polyline, x and y in turn.
std::vector<double> getVertices(const Subject& subject) {
  std::vector<double> coordinates;
  for (const Vector3& place : heavyPolyline(subject).places)
    coordinates.insert(coordinates.end(), {place.x, place.y});
  return coordinates;
}

constexpr const wchar_t* widthLabels[] = {L"Vertex X", L"Vertex Y", L"Start segment width",
                                          L"End segment width"};

std::size_t vertexCount(const Subject& subject, const PropertyRow&) {
  return heavyPolyline(subject).places.size();
}

double getVertexElement(const Subject& subject, const PropertyRow&, std::size_t element) {
  const HeavyPolyline& shape = heavyPolyline(subject);
  const std::size_t vertex = element / 4;
  const double elements[] = {shape.places[vertex].x, shape.places[vertex].y, shape.widths[vertex].start,
                             shape.widths[vertex].end};
  return elements[element % 4];
}

void putVertexElement(const Subject& subject, const PropertyRow&, std::size_t element, double value) {
  constexpr HeavyVertexPart parts[] = {HeavyVertexPart::X, HeavyVertexPart::Y, HeavyVertexPart::StartWidth,
                                       HeavyVertexPart::EndWidth};
  putHeavyVertexPart(subject, element / 4, parts[element % 4], value);
}

// Three numbers come as a point, and are refused: a vertex has two.
void putVertices(const Subject& subject, const std::vector<double>& coordinates) {
  putHeavyVertexPlaces(subject, 2, coordinates);
}

constexpr ElementAccess vertexElements = {
    .labels = widthLabels,
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

double getStartSeg(const Subject& subject) {
  const HeavyPolyline& shape = heavyPolyline(subject);
  return shape.widths.empty() ? 0 : shape.widths.front().start;
}

double getEndSeg(const Subject& subject) {
  const HeavyPolyline& shape = heavyPolyline(subject);
  return shape.widths.empty() ? 0 : shape.widths.front().end;
}

template <HeavyVertexPart Part>
void putFirst(const Subject& subject, const double& width) {
  if (heavyPolyline(subject).places.empty()) throw Refusal(E_FAIL, L"The polyline has no vertices.");
  putHeavyVertexPart(subject, 0, Part, width);
}

double getElevation(const Subject& subject) {
  return pointAt(subject.lens(), 10, polyline).z;
}

void putElevation(const Subject& subject, const double& elevation) {
  putHeavyElevation(subject, elevation);
}

// Not a number where the segments differ: no width can be meant by it, so whatever is put is another value.
double getConstantWidth(const Subject& subject) {
  return heavyPolyline(subject).width().value_or(std::numeric_limits<double>::quiet_NaN());
}

void putConstantWidth(const Subject& subject, const double& width) {
  putHeavyCommonWidth(subject, width);
}

std::vector<BulgeVertex> pathOf(const HeavyPolyline& shape) {
  std::vector<BulgeVertex> path;
  for (const DrawnVertex& vertex : shape.drawn)
    path.push_back({{vertex.place.x, vertex.place.y}, vertex.bulge});
  return path;
}

double getArea(const Subject& subject) {
  const HeavyPolyline& shape = heavyPolyline(subject);
  return std::abs(signedPathArea(pathOf(shape), shape.closed));
}

double getLength(const Subject& subject) {
  const HeavyPolyline& shape = heavyPolyline(subject);
  return pathLength(pathOf(shape), shape.closed);
}

// The kind of the curve counts only while the flag says that there is one.
std::int32_t getFitSmooth(const Subject& subject) {
  constexpr std::int64_t splineFit = 4;
  const std::int64_t flags = subject.lens().integer(70, polyline, 0);
  if ((flags & 2) != 0) return 1;
  if ((flags & splineFit) == 0) return 0;
  return memberOr(types::polylineFit, subject.lens().integer(75, polyline, 6), 6);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                   label                   type                category                   access                                                                                       writability                                   choices               weight help
  {  1, L"Thickness",          L"Thickness",           types::distance,    Category::General,         storedReal(39, polyline),                                                                    writable,                                     Choices::None,         90,   L"How far the polyline is pulled along its normal."},
  {  2, L"Vertex",             L"Vertex",              VT_VARIANT,         Category::Geometry,        vertices(),                                                                                  refusedWhere(isSmoothed),                     Choices::None,        110,   L"The vertices, in the plane of the polyline; of a smoothed one those that it was drawn with."},
  {  3, L"StartSeg",           L"Start segment width", VT_R8,              Category::Geometry,        computed<getStartSeg, putFirst<HeavyVertexPart::StartWidth>>().notNegative().keepingShape(), writable,                                     Choices::None,        120,   L"Width at which the first segment begins."},
  {  4, L"EndSeg",             L"End segment width",   VT_R8,              Category::Geometry,        computed<getEndSeg, putFirst<HeavyVertexPart::EndWidth>>().notNegative().keepingShape(),     writable,                                     Choices::None,        130,   L"Width at which the first segment ends."},
  {  5, L"ConstantWidth",      L"Global width",        types::distance,    Category::Geometry,        computed<getConstantWidth, putConstantWidth>().notNegative().keepingShape(),                 writable,                                     Choices::None,        140,   L"Width of all segments, none where they differ; putting it takes away what a segment has of its own."},
  {  6, L"Elevation",          L"Elevation",           types::distance,    Category::Geometry,        computed<getElevation, putElevation>(),                                                      writable,                                     Choices::None,        150,   L"Height of the polyline's plane over the origin, along its normal."},
  {  7, L"Area",               L"Area",                VT_R8,              Category::Geometry,        computed<getArea>(),                                                                         readOnly(reasons::followsFromVertices),       Choices::None,        160,   L"Of an open polyline: as if a straight line closed it."},
  {  8, L"Length",             L"Length",              types::distance,    Category::Geometry,        computed<getLength>(),                                                                       readOnly(reasons::followsFromVertices),       Choices::None,        170,   L"Along all segments."},
  {  9, L"Closed",             L"Closed",              VT_BOOL,            Category::Misc,            bitUnlessSmoothed(70, polyline, 1),                                                          refusedWhere(isSmoothed),                     Choices::None,        180,   L"Whether a segment leads from the last vertex back to the first."},
  { 10, L"LinetypeGeneration", L"Linetype generation", VT_BOOL,            Category::Misc,            storedBit(70, polyline, 128),                                                                writable,                                     Choices::None,        190,   L"Whether the pattern of the line type runs on through the vertices."},
  { 11, L"FitSmooth",          L"Fit/Smooth",          types::polylineFit, Category::Misc,            computed<getFitSmooth>(),                                                                    readOnly(reasons::smoothVerticesWouldBeMade), Choices::Enumeration, 200,   L"How the polyline is smoothed."},
  { 12, L"Normal",             L"Normal",              VT_VARIANT,         Category::Visualization3D, computedPoint<getNormal>(),                                                                  readOnly(reasons::verticesWouldFollow),       Choices::None,        210,   L"Upright on the plane of the polyline."},
};
// clang-format on

}  // namespace
}  // namespace polylines

constinit const AutomationClass classes::VeltPolyline = {
    .clsid = CLSID_VeltPolyline,
    .name = L"VeltPolyline",
    .label = L"2D Polyline",
    .dxfName = "POLYLINE",
    .standsFor = polylines::isFlat,
    .help = L"A flat polyline whose vertices are entities of their own.",
    .general = &entityRows,
    .rows = polylines::rows,
};

}  // namespace velt::automation
