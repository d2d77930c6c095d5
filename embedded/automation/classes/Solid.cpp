#include "embedded/automation/areas/FilledArea.h"
#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace {

constexpr const std::span<const PropertyRow>* families[] = {&filledAreaRows};

}  // namespace

constinit const AutomationClass classes::VeltSolid = {
    CLSID_VeltSolid, L"VeltSolid", L"2D Solid", "SOLID",  L"A filled area of three or four corners.",
    &entityRows,     {},           nullptr,     families,
};

}  // namespace velt::automation
