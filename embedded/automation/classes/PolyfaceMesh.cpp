#include <cstdint>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/polylines/HeavyVertexEditor.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace polyfaceMeshes {
namespace {

using platform::Category;

bool isMesh(const database::Drawing& drawing, std::uint32_t record) {
  constexpr std::int64_t polyfaceMesh = 64;
  return (database::Lens(drawing, record).integer(70, "*", 0) & polyfaceMesh) != 0;
}

// The drawing tells both numbers as well, but what is there counts.

std::int32_t getVertexCount(const Subject& subject) {
  return static_cast<std::int32_t>(heavyPolyline(subject).places.size());
}

std::int32_t getFaceCount(const Subject& subject) {
  return static_cast<std::int32_t>(heavyPolyline(subject).faces);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                 label                  type        category            access                      writability                         choices        weight help
  {  1, L"Vertex",           L"Vertex",             VT_VARIANT, Category::Geometry, heavyVertices(),            writable,                           Choices::None, 110,   L"The vertices, which the faces name by number."},
  {  2, L"NumberOfVertices", L"Number of vertices", VT_I4,      Category::Mesh,     computed<getVertexCount>(), readOnly(reasons::followsFromThem), Choices::None, 120,   L"How many vertices there are."},
  {  3, L"NumberOfFaces",    L"Number of faces",    VT_I4,      Category::Mesh,     computed<getFaceCount>(),   readOnly(reasons::followsFromThem), Choices::None, 130,   L"How many faces there are."},
};
// clang-format on

}  // namespace
}  // namespace polyfaceMeshes

constinit const AutomationClass classes::VeltPolyfaceMesh = {
    .clsid = CLSID_VeltPolyfaceMesh,
    .name = L"VeltPolyfaceMesh",
    .label = L"Polyface Mesh",
    .dxfName = "POLYLINE",
    .standsFor = polyfaceMeshes::isMesh,
    .help = L"Faces between vertices in space.",
    .general = &entityRows,
    .rows = polyfaceMeshes::rows,
};

}  // namespace velt::automation
