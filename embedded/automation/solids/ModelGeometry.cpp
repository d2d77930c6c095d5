#include "embedded/automation/solids/ModelGeometry.h"

#include <utility>
#include <vector>

#include "dxf/ModelLine.h"

namespace velt::automation {
namespace {

constexpr const char* geometry = "AcDbModelerGeometry";

// As many lines as the modeller wrote: the drawing cuts long ones.
std::vector<std::string> storedLines(const dxf::RecordView& view) {
  std::vector<std::string> lines;
  view.visit(geometry, [&](std::size_t index) {
    if (view.code(index) == 1) lines.emplace_back(view.value(index));
    if (view.code(index) == 3 && !lines.empty()) lines.back() += view.value(index);
    return true;
  });
  return lines;
}

}  // namespace

ModelText modelOf(const Subject& subject) {
  std::vector<std::string> lines = storedLines(subject.lens().view());
  if (lines.empty()) throw Refusal(E_FAIL, L"The drawing stores the model in a form that is not read here.");
  for (std::string& line : lines)
    line = dxf::decodeModelLine(line);
  return ModelText(std::move(lines));
}

std::wstring modelDataOf(const Subject& subject) {
  return std::to_wstring(subject.lens().view().findAll(1, geometry).size()) + L" lines";
}

}  // namespace velt::automation
