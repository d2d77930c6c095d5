#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/ModelOutline.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/solids/ModelGeometry.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
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
  // id name          label          type             category            access                    choices        weight help
  { 1, L"Area",      L"Area",       VT_R8,           Category::Geometry, computed<getArea>(),      Choices::None, 110,   L"Area of the region. Read-only: it follows from the outline."},
  { 2, L"ModelData", L"Model data", types::noEditor, Category::Misc,     computed<modelDataOf>(),  Choices::None, 120,   L"How much the drawing stores about the outline. Read-only: only a modeller can write it."},
  { 3, L"Perimeter", L"Perimeter",  types::distance, Category::Geometry, computed<getPerimeter>(), Choices::None, 130,   L"Length of the outline, with the holes. Read-only: it follows from the outline."},
};
// clang-format on

}  // namespace

constinit const AutomationClass classes::VeltRegion = {
    CLSID_VeltRegion, L"VeltRegion", L"Region", "REGION", L"An area of any outline.", &entityRows, rows,
};

}  // namespace velt::automation
