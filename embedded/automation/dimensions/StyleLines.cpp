#include "embedded/automation/dimensions/StyleLines.h"

#include <cmath>

#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/dimensions/StyleEditor.h"
#include "embedded/automation/model/Refusal.h"

namespace velt::automation {
namespace {

double centerMarkOf(const Subject& subject) {
  return DimensionStyle(subject).real(variables::centerMark);
}

// What the style has, whatever the entity overrides.
double centerMarkOfStyle(const Subject& subject) {
  const double ofStyle = std::abs(DimensionStyle(subject).realOfStyle(variables::centerMark));
  return ofStyle > 0 ? ofStyle : variables::centerMark.usual;
}

}  // namespace

bool getDimLineInside(const Subject& subject) {
  return !DimensionStyle(subject).flag(variables::outsideSuppressed);
}

void putDimLineInside(const Subject& subject, const bool& isInside) {
  overrideFlag(subject, variables::outsideSuppressed, !isInside);
}

std::int32_t getCenterType(const Subject& subject) {
  const double stored = centerMarkOf(subject);
  return stored > 0 ? 1 : stored < 0 ? 2 : 0;
}

void putCenterType(const Subject& subject, const std::int32_t& type) {
  const double before = std::abs(centerMarkOf(subject));
  const double size = before > 0 ? before : centerMarkOfStyle(subject);
  StyleEditor(subject).real(variables::centerMark, type == 0 ? 0 : type == 1 ? size : -size);
}

double getCenterMarkSize(const Subject& subject) {
  return std::abs(centerMarkOf(subject));
}

void putCenterMarkSize(const Subject& subject, const double& size) {
  const std::int32_t type = getCenterType(subject);
  if (type == 0) throw Refusal(E_FAIL, L"There is no center mark that could have a size.");
  StyleEditor(subject).real(variables::centerMark, type == 1 ? size : -size);
}

}  // namespace velt::automation
