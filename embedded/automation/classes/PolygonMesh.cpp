#include <cstdint>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/polylines/HeavyVertexEditor.h"
#include "embedded/automation/polylines/PolylineTypes.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace polygonMeshes {
namespace {

using platform::Category;

constexpr const char* mesh = "AcDbPolygonMesh";

bool isMesh(const database::Drawing& drawing, std::uint32_t record) {
  constexpr std::int64_t polygonMesh = 16;
  constexpr std::int64_t polyfaceMesh = 64;
  return (database::Lens(drawing, record).integer(70, "*", 0) & (polygonMesh | polyfaceMesh)) == polygonMesh;
}

// The kind of the curve counts only while the flag says that there is one.
std::int32_t getFitSmooth(const Subject& subject) {
  constexpr std::int64_t splineFit = 4;
  const std::int64_t flags = subject.lens().integer(70, mesh, 0);
  if ((flags & splineFit) == 0) return 0;
  return memberOr(types::meshFit, subject.lens().integer(75, mesh, 6), 6);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name             label              type            category            access                           writability                                   choices               weight help
  {  1, L"Vertex",       L"Vertex",         VT_VARIANT,     Category::Geometry, heavyVertices(),                 refusedWhere(isSmoothed),                     Choices::None,        110,   L"The vertices, column by column; of a smoothed mesh those that it was drawn with."},
  {  2, L"MVertexCount", L"M vertex count", VT_I4,          Category::Mesh,     storedInteger(71, mesh),         readOnly(reasons::followsFromVertices),       Choices::None,        120,   L"How many rows of vertices there are."},
  {  3, L"NVertexCount", L"N vertex count", VT_I4,          Category::Mesh,     storedInteger(72, mesh),         readOnly(reasons::followsFromVertices),       Choices::None,        130,   L"How many columns of vertices there are."},
  {  4, L"MDensity",     L"M density",      VT_I4,          Category::Mesh,     storedInteger(73, mesh),         readOnly(reasons::smoothVerticesWouldBeMade), Choices::None,        140,   L"How many rows the smoothed mesh has."},
  {  5, L"NDensity",     L"N density",      VT_I4,          Category::Mesh,     storedInteger(74, mesh),         readOnly(reasons::smoothVerticesWouldBeMade), Choices::None,        150,   L"How many columns the smoothed mesh has."},
  {  6, L"MClose",       L"M closed",       VT_BOOL,        Category::Mesh,     bitUnlessSmoothed(70, mesh, 1),  refusedWhere(isSmoothed),                     Choices::None,        160,   L"Whether the last row leads back to the first."},
  {  7, L"NClose",       L"N closed",       VT_BOOL,        Category::Mesh,     bitUnlessSmoothed(70, mesh, 32), refusedWhere(isSmoothed),                     Choices::None,        170,   L"Whether the last column leads back to the first."},
  {  8, L"FitSmooth",    L"Fit/Smooth",     types::meshFit, Category::Mesh,     computed<getFitSmooth>(),        readOnly(reasons::smoothVerticesWouldBeMade), Choices::Enumeration, 180,   L"How the mesh is smoothed."},
};
// clang-format on

}  // namespace
}  // namespace polygonMeshes

constinit const AutomationClass classes::VeltPolygonMesh = {
    .clsid = CLSID_VeltPolygonMesh,
    .name = L"VeltPolygonMesh",
    .label = L"Polygon Mesh",
    .dxfName = "POLYLINE",
    .standsFor = polygonMeshes::isMesh,
    .help = L"A net of vertices in rows and columns.",
    .general = &entityRows,
    .rows = polygonMeshes::rows,
};

}  // namespace velt::automation
