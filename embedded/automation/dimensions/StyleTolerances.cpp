#include "embedded/automation/dimensions/StyleTolerances.h"

#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/dimensions/StyleEditor.h"
#include "embedded/automation/dimensions/StyleText.h"
#include "embedded/automation/model/Refusal.h"

namespace velt::automation {
namespace {

enum Tolerance : std::int32_t { none, symmetrical, deviation, limits, basic };

bool areLimitsEqual(const Subject& subject) {
  // Stored with the same text, two equal numbers are the same number.
  return getUpperLimit(subject) == getLowerLimit(subject);
}

void requireTolerance(const Subject& subject, std::int32_t tolerance) {
  if (tolerance == symmetrical && !areLimitsEqual(subject)) {
    throw Refusal(E_FAIL, L"The limits differ, so that the tolerance is not symmetrical.");
  }
  if (tolerance == deviation && areLimitsEqual(subject)) {
    throw Refusal(E_FAIL, L"The limits are equal, so that the tolerance is symmetrical.");
  }
  if (tolerance == basic && storedTextGap(subject) == 0) {
    throw Refusal(E_FAIL, L"A frame needs room around the text.");
  }
}

// Of the two limits one.
void putLimit(const Subject& subject, const StyleVariable& variable, const StyleVariable& otherVariable,
              double limit) {
  const DimensionStyle style(subject);
  if (style.real(variable) == limit) return;
  const std::int32_t tolerance = getTolerance(subject);
  if (tolerance == deviation && style.real(otherVariable) == limit) {
    throw Refusal(E_FAIL, L"With equal limits the tolerance would be symmetrical.");
  }
  StyleEditor editor(subject);
  editor.real(variable, limit);
  if (tolerance == symmetrical) editor.real(otherVariable, limit);
}

}  // namespace

std::int32_t getTolerance(const Subject& subject) {
  const DimensionStyle style(subject);
  if (style.flag(variables::hasLimits)) return limits;
  if (style.flag(variables::hasTolerance)) return areLimitsEqual(subject) ? symmetrical : deviation;
  return storedTextGap(subject) < 0 ? basic : none;
}

void putTolerance(const Subject& subject, const std::int32_t& tolerance) {
  requireTolerance(subject, tolerance);
  overrideFlag(subject, variables::hasLimits, tolerance == limits);
  overrideFlag(subject, variables::hasTolerance, tolerance == symmetrical || tolerance == deviation);
  const double gap = storedTextGap(subject);
  if ((gap < 0) != (tolerance == basic)) StyleEditor(subject).real(variables::textGap, -gap);
}

double getLowerLimit(const Subject& subject) {
  return DimensionStyle(subject).real(variables::lowerLimit);
}

double getUpperLimit(const Subject& subject) {
  return DimensionStyle(subject).real(variables::upperLimit);
}

void putLowerLimit(const Subject& subject, const double& limit) {
  putLimit(subject, variables::lowerLimit, variables::upperLimit, limit);
}

void putUpperLimit(const Subject& subject, const double& limit) {
  putLimit(subject, variables::upperLimit, variables::lowerLimit, limit);
}

}  // namespace velt::automation
