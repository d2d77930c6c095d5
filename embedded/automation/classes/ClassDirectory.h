#pragma once

// The directory of automation classes: which there are, and which of them stands for a record of a drawing.
//
// Every class id has a table. So a new class is its line in the list of ids, and a file beside this one that defines its
// table:
//   constinit const AutomationClass classes::VeltLine = {.clsid = CLSID_VeltLine, .name = L"VeltLine", ...};
// Classes name their rows alike, so what a file needs for itself stands in a namespace of its class.

#include <cstdint>
#include <span>

#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

namespace classes {
#define VELT_CLSID(name, ...) extern const AutomationClass name;
#define VELT_IID(name, ...)
#include "host/automation/Ids.inc"
}  // namespace classes

// In the order of the list of ids.
[[nodiscard]] inline std::span<const AutomationClass* const> automationClasses() {
#define VELT_CLSID(name, ...) &classes::name,
#define VELT_IID(name, ...)
  static constexpr const AutomationClass* list[] = {
#include "host/automation/Ids.inc"
  };
  return list;
}

// Null for an id that no class has.
[[nodiscard]] const AutomationClass* findClass(REFCLSID clsid);

// Of the classes whose tables name the record's type, the one that picks the record, else the one that picks none.
// Null when no table names the type: such an entity has only what all entities have. Costs a look-up of the type and
// whatever the tables' own tests cost.
[[nodiscard]] const AutomationClass* classOfRecord(const database::Drawing& drawing, std::uint32_t record);

}  // namespace velt::automation
