#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/ModelOutline.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/solids/ModelGeometry.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace regions {
namespace {

using platform::Category;

double getArea(const Subject& subject) {
  return toldByModel(subject, sizeOfRegion).area;
}

double getPerimeter(const Subject& subject) {
  return toldByModel(subject, sizeOfRegion).perimeter;
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name          label          type             category            access                    writability                            choices        weight help
  {  1, L"Area",      L"Area",       VT_R8,           Category::Geometry, computed<getArea>(),      readOnly(reasons::followsFromOutline), Choices::None, 110,   L"Area of the region."},
  {  2, L"ModelData", L"Model data", types::noEditor, Category::Misc,     computed<modelDataOf>(),  readOnly(reasons::modellerWritesIt),   Choices::None, 120,   L"How much the drawing stores about the outline."},
  {  3, L"Perimeter", L"Perimeter",  types::distance, Category::Geometry, computed<getPerimeter>(), readOnly(reasons::followsFromOutline), Choices::None, 130,   L"Length of the outline, with the holes."},
};
// clang-format on

}  // namespace
}  // namespace regions

constinit const AutomationClass classes::VeltRegion = {
    .clsid = CLSID_VeltRegion,
    .name = L"VeltRegion",
    .label = L"Region",
    .dxfName = "REGION",
    .help = L"An area of any outline.",
    .general = &entityRows,
    .rows = regions::rows,
};

}  // namespace velt::automation
