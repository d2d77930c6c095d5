#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/lines/EndlessLine.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace rays {
namespace {

constexpr auto rows = endlessLineRows("AcDbRay", L"Where the line begins.");

}  // namespace
}  // namespace rays

constinit const AutomationClass classes::VeltRay = {
    .clsid = CLSID_VeltRay,
    .name = L"VeltRay",
    .label = L"Ray",
    .dxfName = "RAY",
    .help = L"A line without an end.",
    .general = &entityRows,
    .rows = rays::rows,
};

}  // namespace velt::automation
