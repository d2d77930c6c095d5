#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/lines/EndlessLine.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace {

constexpr auto rows = endlessLineRows("AcDbRay", L"Where the line begins.");

}  // namespace

constinit const AutomationClass classes::VeltRay = {
    CLSID_VeltRay, L"VeltRay", L"Ray", "RAY", L"A line without an end.", &entityRows, rows,
};

}  // namespace velt::automation
