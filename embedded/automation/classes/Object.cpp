#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "host/automation/IdValues.h"

namespace velt::automation {

// Whatever is no entity and has no class of its own.
constinit const AutomationClass classes::VeltObject = {
    .clsid = CLSID_VeltObject,
    .name = L"VeltObject",
    .label = L"Object",
    .dxfName = "",
    .help = L"An object of a drawing.",
    .general = &objectRows,
};

}  // namespace velt::automation
