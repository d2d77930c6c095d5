#include <cstdint>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/polylines/HeavyVertexEditor.h"
#include "embedded/automation/polylines/PolylineTypes.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace spacePolylines {
namespace {

using platform::Category;

constexpr const char* polyline = "AcDb3dPolyline";

bool isSpatial(const database::Drawing& drawing, std::uint32_t record) {
  constexpr std::int64_t spatial = 8;
  constexpr std::int64_t meshes = 16 | 64;
  return (database::Lens(drawing, record).integer(70, "*", 0) & (spatial | meshes)) == spatial;
}

double getLength(const Subject& subject) {
  const HeavyPolyline& shape = heavyPolyline(subject);
  double total = 0;
  for (std::size_t i = 1; i < shape.drawn.size(); ++i)
    total += length(shape.drawn[i].place - shape.drawn[i - 1].place);
  if (shape.closed && !shape.drawn.empty())
    total += length(shape.drawn.front().place - shape.drawn.back().place);
  return total;
}

// The kind of the curve counts only while the flag says that there is one.
std::int32_t getFitSmooth(const Subject& subject) {
  constexpr std::int64_t splineFit = 4;
  const std::int64_t flags = subject.lens().integer(70, polyline, 0);
  if ((flags & splineFit) == 0) return 0;
  return memberOr(types::spatialPolylineFit, subject.lens().integer(75, polyline, 6), 6);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name          label          type                       category            access                              writability                                   choices               weight help
  {  1, L"Vertex",    L"Vertex",     VT_VARIANT,                Category::Geometry, heavyVertices(),                    refusedWhere(isSmoothed),                     Choices::None,        110,   L"The vertices; of a smoothed polyline those that it was drawn with."},
  {  2, L"Length",    L"Length",     types::distance,           Category::Geometry, computed<getLength>(),              readOnly(reasons::followsFromVertices),       Choices::None,        120,   L"Along all segments."},
  {  3, L"Closed",    L"Closed",     VT_BOOL,                   Category::Misc,     bitUnlessSmoothed(70, polyline, 1), refusedWhere(isSmoothed),                     Choices::None,        130,   L"Whether a segment leads from the last vertex back to the first."},
  {  4, L"FitSmooth", L"Fit/Smooth", types::spatialPolylineFit, Category::Misc,     computed<getFitSmooth>(),           readOnly(reasons::smoothVerticesWouldBeMade), Choices::Enumeration, 140,   L"How the polyline is smoothed."},
};
// clang-format on

}  // namespace
}  // namespace spacePolylines

constinit const AutomationClass classes::Velt3DPolyline = {
    .clsid = CLSID_Velt3DPolyline,
    .name = L"Velt3DPolyline",
    .label = L"3D Polyline",
    .dxfName = "POLYLINE",
    .standsFor = spacePolylines::isSpatial,
    .help = L"A polyline in space.",
    .general = &entityRows,
    .rows = spacePolylines::rows,
};

}  // namespace velt::automation
