#pragma once

// The measurement that a dimension stores, which is what it measures times the scale of its style.

#include <optional>
#include <utility>

#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// Of a dimension that measures a length.
[[nodiscard]] std::optional<double> measuredLength(const Subject& subject);

// Stores what is measured now, where the dimension measures a length and stores it, and it was another one before.
void updateMeasurement(const Subject& subject, std::optional<double> before);

// Runs a change of the style.
template <class Change>
void keepingMeasurement(const Subject& subject, Change&& change) {
  const std::optional<double> before = measuredLength(subject);
  std::forward<Change>(change)();
  updateMeasurement(subject, before);
}

}  // namespace velt::automation
