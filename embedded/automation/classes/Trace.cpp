#include "embedded/automation/areas/FilledArea.h"
#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace {

constexpr const std::span<const PropertyRow>* families[] = {&filledAreaRows};

}  // namespace

constinit const AutomationClass classes::VeltTrace = {
    CLSID_VeltTrace, L"VeltTrace", L"Trace", "TRACE",  L"A filled line of its own width.",
    &entityRows,     {},           nullptr,  families,
};

}  // namespace velt::automation
