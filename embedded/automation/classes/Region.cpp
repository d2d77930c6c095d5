#include <string>

#include "embedded/automation/Access.h"
#include "embedded/automation/ClassList.h"
#include "embedded/automation/HostIds.h"
#include "embedded/automation/Refusal.h"
#include "embedded/automation/classes/General.h"

namespace velt::automation {
namespace {

using palette::Category;

constexpr const char* geometry = "AcDbModelerGeometry";

/// The outline stands in the words of a modeller, which are not read here.
double getArea(const Subject&) {
  throw Refusal(E_FAIL, L"The outline of the region stands in data of a modeller, which cannot be read.");
}

std::wstring getModelData(const Subject& subject) {
  const std::size_t lines = subject.lens().view().findAll(1, geometry).size();
  return std::to_wstring(lines) + L" lines";
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name          label          type             category            access                    choices        weight help
  { 1, L"Area",      L"Area",       VT_R8,           Category::Geometry, computed<getArea>(),      Choices::None, 110,   L"Area of the region. Read-only: it follows from the outline."},
  { 2, L"ModelData", L"Model data", types::noEditor, Category::Misc,     computed<getModelData>(), Choices::None, 120,   L"How much the drawing stores about the outline. Read-only: only a modeller can read it."},
};
// clang-format on

}  // namespace

constinit const AutomationClass classes::VeltRegion = {
    CLSID_VeltRegion, L"VeltRegion", L"Region", "REGION", L"An area of any outline.", &entityRows, rows,
};

}  // namespace velt::automation
