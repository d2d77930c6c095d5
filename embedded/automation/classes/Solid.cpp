#include "embedded/automation/areas/FilledArea.h"
#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace solids {
namespace {

constexpr const std::span<const PropertyRow>* families[] = {&filledAreaRows};

}  // namespace
}  // namespace solids

constinit const AutomationClass classes::VeltSolid = {
    .clsid = CLSID_VeltSolid,
    .name = L"VeltSolid",
    .label = L"2D Solid",
    .dxfName = "SOLID",
    .help = L"A filled area of three or four corners.",
    .general = &entityRows,
    .families = solids::families,
};

}  // namespace velt::automation
