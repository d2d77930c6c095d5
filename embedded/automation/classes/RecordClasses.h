// Which automation class stands for a record of a drawing.
#pragma once

#include <cstdint>

#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

/// Of the classes whose tables name the record's type, the one that picks the record, else the one that picks none.
/// Null when no table names the type: such an entity has only what all entities have. Costs a look-up of the type and
/// whatever the tables' own tests cost.
[[nodiscard]] const AutomationClass* classOfRecord(const database::Drawing& drawing, std::uint32_t record);

}  // namespace velt::automation
