// The tables of all automation classes.
#pragma once

#include <span>

#include "embedded/automation/PropertyTable.h"

namespace velt::automation {

#define VELT_AUTOMATION_CLASS(name) extern const AutomationClass name;
#include "embedded/automation/ClassList.inc"

/// In the order of the list.
[[nodiscard]] inline std::span<const AutomationClass* const> automationClasses() {
#define VELT_AUTOMATION_CLASS(name) &name,
  static constexpr const AutomationClass* list[] = {
#include "embedded/automation/ClassList.inc"
  };
  return list;
}

}  // namespace velt::automation
