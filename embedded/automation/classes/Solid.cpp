#include "embedded/automation/ClassList.h"
#include "embedded/automation/HostIds.h"
#include "embedded/automation/classes/FilledArea.h"
#include "embedded/automation/classes/General.h"

namespace velt::automation {
namespace {

constexpr const std::span<const PropertyRow>* families[] = {&filledAreaRows};

}  // namespace

constinit const AutomationClass classes::VeltSolid = {
    CLSID_VeltSolid, L"VeltSolid", L"2D Solid", "SOLID",  L"A filled area of three or four corners.",
    &entityRows,     {},           nullptr,     families,
};

}  // namespace velt::automation
