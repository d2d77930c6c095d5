#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "host/automation/IdValues.h"

namespace velt::automation {

// Objects that are not entities and have no class of their own.
constinit const AutomationClass classes::VeltObject = {
    .clsid = CLSID_VeltObject,
    .name = L"VeltObject",
    .label = L"Object",
    .dxfName = "",
    .help = L"An object of a drawing.",
    .general = &objectRows,
};

}  // namespace velt::automation
