#include <cstdint>
#include <vector>

#include "embedded/automation/Access.h"
#include "embedded/automation/ClassList.h"
#include "embedded/automation/HeavyPolyline.h"
#include "embedded/automation/HostIds.h"
#include "embedded/automation/classes/General.h"

namespace velt::automation {
namespace {

using palette::Category;

constexpr const char* mesh = "AcDbPolyFaceMesh";

bool isMesh(const database::Drawing& drawing, std::uint32_t record) {
  constexpr std::int64_t polyfaceMesh = 64;
  return (database::Lens(drawing, record).integer(70, "*", 0) & polyfaceMesh) != 0;
}

std::vector<double> getVertices(const Subject& subject) {
  std::vector<double> coordinates;
  for (const Vector3& place : heavyPolyline(subject).places)
    coordinates.insert(coordinates.end(), {place.x, place.y, place.z});
  return coordinates;
}

constexpr const wchar_t* vertexLabels[] = {L"Vertex X", L"Vertex Y", L"Vertex Z"};

std::size_t vertexCount(const Subject& subject, const PropertyRow&) {
  return heavyPolyline(subject).places.size();
}

double getVertexElement(const Subject& subject, const PropertyRow&, std::size_t element) {
  const Vector3& place = heavyPolyline(subject).places[element / 3];
  const double elements[] = {place.x, place.y, place.z};
  return elements[element % 3];
}

constexpr ElementAccess vertexElements = {vertexLabels, false, 1, vertexCount, getVertexElement, nullptr};

constexpr Access vertices() {
  Access made = computed<getVertices>();
  made.elements = &vertexElements;
  return made;
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
  // id name                 label                  type        category            access                      choices        weight help
  { 1, L"Vertex",           L"Vertex",             VT_VARIANT, Category::Geometry, vertices(),                 Choices::None, 110,   L"The vertices. Read-only: the vertices are entities of their own."},
  { 2, L"NumberOfVertices", L"Number of vertices", VT_I4,      Category::Mesh,     computed<getVertexCount>(), Choices::None, 120,   L"How many vertices there are. Read-only: it follows from them."},
  { 3, L"NumberOfFaces",    L"Number of faces",    VT_I4,      Category::Mesh,     computed<getFaceCount>(),   Choices::None, 130,   L"How many faces there are. Read-only: it follows from them."},
};
// clang-format on

}  // namespace

constinit const AutomationClass polyfaceMeshClass = {
    CLSID_VeltPolyfaceMesh,
    L"VeltPolyfaceMesh",
    L"Polyface Mesh",
    "POLYLINE",
    L"Faces between vertices in space.",
    &entityRows,
    rows,
    nullptr,
    {},
    isMesh,
};

}  // namespace velt::automation
