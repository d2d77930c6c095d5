#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/lines/EndlessLine.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace constructionLines {
namespace {

constexpr auto rows = endlessLineRows("AcDbXline", L"A point of the line.");

}  // namespace
}  // namespace constructionLines

constinit const AutomationClass classes::VeltXLine = {
    .clsid = CLSID_VeltXLine,
    .name = L"VeltXLine",
    .label = L"Construction Line",
    .dxfName = "XLINE",
    .help = L"A line without ends.",
    .general = &entityRows,
    .rows = constructionLines::rows,
};

}  // namespace velt::automation
