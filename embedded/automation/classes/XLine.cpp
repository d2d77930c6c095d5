#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/lines/EndlessLine.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace {

constexpr auto rows = endlessLineRows("AcDbXline", L"A point of the line.");

}  // namespace

constinit const AutomationClass classes::VeltXLine = {
    CLSID_VeltXLine, L"VeltXLine", L"Construction Line", "XLINE", L"A line without ends.", &entityRows, rows,
};

}  // namespace velt::automation
