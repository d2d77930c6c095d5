#include "embedded/automation/ClassList.h"
#include "embedded/automation/HostIds.h"
#include "embedded/automation/classes/FilledArea.h"
#include "embedded/automation/classes/General.h"

namespace velt::automation {
namespace {

constexpr const std::span<const PropertyRow>* families[] = {&filledAreaRows};

}  // namespace

constinit const AutomationClass classes::VeltTrace = {
    CLSID_VeltTrace, L"VeltTrace", L"Trace", "TRACE",  L"A filled line of its own width.",
    &entityRows,     {},           nullptr,  families,
};

}  // namespace velt::automation
