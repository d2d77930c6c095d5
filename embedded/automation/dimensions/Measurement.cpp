#include "embedded/automation/dimensions/Measurement.h"

#include <string_view>

#include "embedded/automation/dimensions/DimensionTypes.h"
#include "embedded/automation/model/Editor.h"

namespace velt::automation {

std::optional<double> measuredLength(const Subject& subject) {
  for (const PropertyRow& row : subject.kind().rows) {
    if (std::wstring_view(row.name) != L"Measurement" || row.type.user != &types::distance) continue;
    return std::get<double>(row.access.get(subject, row));
  }
  return std::nullopt;
}

void updateMeasurement(const Subject& subject, std::optional<double> before) {
  constexpr int measurementCode = 42;
  constexpr const char* dimension = "AcDbDimension";
  const std::optional<double> after = measuredLength(subject);
  if (after && after != before && subject.lens().has(measurementCode, dimension)) {
    Editor(subject).real(measurementCode, dimension, *after);
  }
}

}  // namespace velt::automation
