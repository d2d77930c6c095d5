#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/texts/SingleLineText.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace texts {
namespace {

constexpr const std::span<const PropertyRow>* families[] = {&singleLineRows};

}  // namespace
}  // namespace texts

constinit const AutomationClass classes::VeltText = {
    .clsid = CLSID_VeltText,
    .name = L"VeltText",
    .label = L"Text",
    .dxfName = "TEXT",
    .help = L"A single line of text.",
    .general = &entityRows,
    .families = texts::families,
};

}  // namespace velt::automation
