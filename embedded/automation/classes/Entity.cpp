#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "host/automation/IdValues.h"

namespace velt::automation {

// Entities that have no class of their own.
constinit const AutomationClass classes::VeltEntity = {
    CLSID_VeltEntity, L"VeltEntity", L"Entity", "", L"An entity of a drawing.", &entityRows, {},
};

}  // namespace velt::automation
