// The tables of all automation classes: every class id has one.
//
// So a new class is its line in the list of ids, and a file under classes/ that defines its table:
//   constinit const AutomationClass classes::VeltLine = {CLSID_VeltLine, L"VeltLine", ...};
#pragma once

#include <span>

#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

namespace classes {
#define VELT_CLSID(name, ...) extern const AutomationClass name;
#define VELT_IID(name, ...)
#include "host/automation/Ids.inc"
}  // namespace classes

/// In the order of the list.
[[nodiscard]] inline std::span<const AutomationClass* const> automationClasses() {
#define VELT_CLSID(name, ...) &classes::name,
#define VELT_IID(name, ...)
  static constexpr const AutomationClass* list[] = {
#include "host/automation/Ids.inc"
  };
  return list;
}

}  // namespace velt::automation
