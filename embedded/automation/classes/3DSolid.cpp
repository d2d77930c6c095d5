#include <cstddef>
#include <cstdint>
#include <string_view>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/solids/ModelGeometry.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace spaceSolids {
namespace {

using platform::Category;

std::int32_t countOf(const Subject& subject, std::string_view part) {
  return toldByModel(subject, [&](const ModelText& model) {
    std::int32_t count = 0;
    for (std::size_t record = 0; record < model.size(); ++record)
      count += model.nameOf(record) == part ? 1 : 0;
    return count;
  });
}

std::int32_t getFaceCount(const Subject& subject) {
  return countOf(subject, "face");
}

std::int32_t getEdgeCount(const Subject& subject) {
  return countOf(subject, "edge");
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name              label               type             category            access                    writability                           choices        weight help
  {  1, L"NumberOfFaces", L"Number of faces", VT_I4,           Category::Geometry, computed<getFaceCount>(), readOnly(reasons::modellerMakesThem), Choices::None, 110,   L"How many faces bound the solid; empty where the drawing holds no text of a modeller."},
  {  2, L"NumberOfEdges", L"Number of edges", VT_I4,           Category::Geometry, computed<getEdgeCount>(), readOnly(reasons::modellerMakesThem), Choices::None, 120,   L"How many edges lie between them; empty where the drawing holds no text of a modeller."},
  {  3, L"ModelData",     L"Model data",      types::noEditor, Category::Misc,     computed<modelDataOf>(),  readOnly(reasons::modellerWritesIt),  Choices::None, 130,   L"How much the drawing stores about the solid."},
};
// clang-format on

}  // namespace
}  // namespace spaceSolids

constinit const AutomationClass classes::Velt3DSolid = {
    .clsid = CLSID_Velt3DSolid,
    .name = L"Velt3DSolid",
    .label = L"3D Solid",
    .dxfName = "3DSOLID",
    .help = L"A body in space.",
    .general = &entityRows,
    .rows = spaceSolids::rows,
};

}  // namespace velt::automation
