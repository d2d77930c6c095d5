#include "embedded/automation/ClassList.h"
#include "embedded/automation/HostIds.h"
#include "embedded/automation/classes/EndlessLine.h"
#include "embedded/automation/classes/General.h"

namespace velt::automation {
namespace {

constexpr auto rows = endlessLineRows("AcDbRay", L"Where the line begins.");

}  // namespace

constinit const AutomationClass classes::VeltRay = {
    CLSID_VeltRay, L"VeltRay", L"Ray", "RAY", L"A line without an end.", &entityRows, rows,
};

}  // namespace velt::automation
