#include "embedded/automation/areas/FilledArea.h"
#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace traces {
namespace {

constexpr const std::span<const PropertyRow>* families[] = {&filledAreaRows};

}  // namespace
}  // namespace traces

constinit const AutomationClass classes::VeltTrace = {
    .clsid = CLSID_VeltTrace,
    .name = L"VeltTrace",
    .label = L"Trace",
    .dxfName = "TRACE",
    .help = L"A filled line of its own width.",
    .general = &entityRows,
    .families = traces::families,
};

}  // namespace velt::automation
