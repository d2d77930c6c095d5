#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "host/automation/IdValues.h"

namespace velt::automation {

// Whatever is no entity and has no class of its own.
constinit const AutomationClass classes::VeltObject = {
    CLSID_VeltObject, L"VeltObject", L"Object", "", L"An object of a drawing.", &objectRows, {},
};

}  // namespace velt::automation
