#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "host/automation/IdValues.h"

namespace velt::automation {

// Entities that have no class of their own.
constinit const AutomationClass classes::VeltEntity = {
    .clsid = CLSID_VeltEntity,
    .name = L"VeltEntity",
    .label = L"Entity",
    .dxfName = "",
    .help = L"An entity of a drawing.",
    .general = &entityRows,
};

}  // namespace velt::automation
