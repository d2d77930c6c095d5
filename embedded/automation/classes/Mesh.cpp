#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "dxf/Numbers.h"
#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/PointList.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace meshes {
namespace {

using platform::Category;

constexpr const char* mesh = "AcDbSubDMesh";

std::vector<Vector3> getVertices(const Subject& subject) {
  return storedPoints(subject, 10, mesh);
}

std::int32_t getVertexCount(const Subject& subject) {
  return static_cast<std::int32_t>(pointList<getVertices>(subject).size());
}

using Face = std::vector<std::int64_t>;

// One list holds all faces: how many corners a face has, then which vertices these are. A last face that is cut off
// does not count, nor does one without corners.
std::vector<Face> facesOf(const Subject& subject) {
  constexpr int sizeOfList = 93;
  constexpr int endOfList = 94;
  constexpr int entry = 90;
  const database::Lens lens = subject.lens();
  const dxf::RecordView& view = lens.view();
  std::vector<Face> faces;
  std::size_t missing = 0;
  bool isInside = false;
  for (std::size_t index = 0; index < view.size() && view.code(index) != endOfList; ++index) {
    if (view.code(index) == sizeOfList) isInside = true;
    if (!isInside || view.code(index) != entry) continue;
    const std::int64_t number = dxf::parseInteger<std::int64_t>(view.value(index)).value_or(0);
    if (missing > 0) {
      faces.back().push_back(number);
      --missing;
    } else if (number > 0) {
      missing = static_cast<std::size_t>(number);
      faces.emplace_back();
    }
  }
  if (missing > 0) faces.pop_back();
  return faces;
}

std::int32_t getFaceCount(const Subject& subject) {
  return static_cast<std::int32_t>(facesOf(subject).size());
}

// Every edge lies between two faces, and these run along it in opposite directions.
bool getIsClosed(const Subject& subject) {
  std::map<std::pair<std::int64_t, std::int64_t>, int> edges;
  for (const Face& face : facesOf(subject)) {
    for (std::size_t corner = 0; corner < face.size(); ++corner)
      ++edges[{face[corner], face[(corner + 1) % face.size()]}];
  }
  return !edges.empty() && std::all_of(edges.begin(), edges.end(), [&](const auto& edge) {
    const auto back = edges.find({edge.first.second, edge.first.first});
    return back != edges.end() && back->second == 1;
  });
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                 label                  type        category            access                                 writability                            choices        weight help
  {  1, L"Vertex",           L"Vertex",             VT_VARIANT, Category::Geometry, computedPoints<getVertices>(),         readOnly(reasons::facesAreMadeOfThem), Choices::None, 110,   L"The vertices of the mesh before it is smoothed."},
  {  2, L"SmoothnessLevel",  L"Smoothness",         VT_I4,      Category::Mesh,     storedInteger(91, mesh).notNegative(), writable,                              Choices::None, 120,   L"How often the faces are divided when the mesh is drawn; 0 for the mesh as it is stored."},
  {  3, L"NumberOfVertices", L"Number of vertices", VT_I4,      Category::Mesh,     computed<getVertexCount>(),            readOnly(reasons::followsFromThem),    Choices::None, 130,   L"How many vertices there are before it is smoothed."},
  {  4, L"NumberOfFaces",    L"Number of faces",    VT_I4,      Category::Mesh,     computed<getFaceCount>(),              readOnly(reasons::followsFromThem),    Choices::None, 140,   L"How many faces there are before it is smoothed."},
  {  5, L"Closed",           L"Watertight",         VT_BOOL,    Category::Mesh,     computed<getIsClosed>(),               readOnly(reasons::followsFromThem),    Choices::None, 150,   L"Whether the faces enclose a space without a gap."},
};
// clang-format on

}  // namespace
}  // namespace meshes

constinit const AutomationClass classes::VeltMesh = {
    .clsid = CLSID_VeltMesh,
    .name = L"VeltMesh",
    .label = L"Mesh",
    .dxfName = "MESH",
    .help = L"Faces in space that can be smoothed.",
    .general = &entityRows,
    .rows = meshes::rows,
};

}  // namespace velt::automation
