#include "embedded/automation/ClassList.h"
#include "embedded/automation/HostIds.h"
#include "embedded/automation/classes/General.h"

namespace velt::automation {

// Entities that have no class of their own.
constinit const AutomationClass classes::VeltEntity = {
    CLSID_VeltEntity, L"VeltEntity", L"Entity", "", L"An entity of a drawing.", &entityRows, {},
};

}  // namespace velt::automation
