#include <string>
#include <utility>
#include <vector>

#include "embedded/automation/Access.h"
#include "embedded/automation/ClassList.h"
#include "embedded/automation/HostIds.h"
#include "embedded/automation/Refusal.h"
#include "embedded/automation/classes/General.h"
#include "embedded/automation/geometry/Boundary.h"
#include "embedded/automation/geometry/ModelOutline.h"
#include "embedded/dxf/ModelLine.h"

namespace velt::automation {
namespace {

using palette::Category;

constexpr const char* geometry = "AcDbModelerGeometry";

/// As many lines as the modeller wrote: the drawing cuts long ones.
std::vector<std::string> storedLines(const dxf::RecordView& view) {
  std::vector<std::string> lines;
  view.visit(geometry, [&](std::size_t index) {
    if (view.code(index) == 1) lines.emplace_back(view.value(index));
    if (view.code(index) == 3 && !lines.empty()) lines.back() += view.value(index);
    return true;
  });
  return lines;
}

RegionSize sizeOf(const Subject& subject) {
  std::vector<std::string> lines = storedLines(subject.lens().view());
  if (lines.empty()) throw Refusal(E_FAIL, L"The drawing does not hold the outline as a modeller's text.");
  for (std::string& line : lines)
    line = dxf::decodeModelLine(line);
  const auto refusal = [](const std::exception& error) {
    const std::string why = error.what();
    return Refusal(E_FAIL, L"The outline cannot be measured: " + std::wstring(why.begin(), why.end()) + L".");
  };
  try {
    return sizeOfRegion(ModelText(std::move(lines)));
  } catch (const ModelError& error) {
    throw refusal(error);
  } catch (const BoundaryError& error) {
    throw refusal(error);
  }
}

double getArea(const Subject& subject) {
  return sizeOf(subject).area;
}

double getPerimeter(const Subject& subject) {
  return sizeOf(subject).perimeter;
}

std::wstring getModelData(const Subject& subject) {
  const std::size_t lines = subject.lens().view().findAll(1, geometry).size();
  return std::to_wstring(lines) + L" lines";
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name          label          type             category            access                    choices        weight help
  { 1, L"Area",      L"Area",       VT_R8,           Category::Geometry, computed<getArea>(),      Choices::None, 110,   L"Area of the region. Read-only: it follows from the outline."},
  { 2, L"ModelData", L"Model data", types::noEditor, Category::Misc,     computed<getModelData>(), Choices::None, 120,   L"How much the drawing stores about the outline. Read-only: only a modeller can write it."},
  { 3, L"Perimeter", L"Perimeter",  types::distance, Category::Geometry, computed<getPerimeter>(), Choices::None, 130,   L"Length of the outline, with the holes. Read-only: it follows from the outline."},
};
// clang-format on

}  // namespace

constinit const AutomationClass classes::VeltRegion = {
    CLSID_VeltRegion, L"VeltRegion", L"Region", "REGION", L"An area of any outline.", &entityRows, rows,
};

}  // namespace velt::automation
