#include <string>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/texts/SingleLineText.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace attributeDefinitions {
namespace {

using platform::Category;

constexpr const char* definition = "AcDbAttributeDefinition";

std::wstring getTag(const Subject& subject) {
  return subject.lens().name(2, definition);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name             label         type     category              access                        writability                                     choices        weight help
  { 21, L"TagString",    L"Tag",       VT_BSTR, Category::Attributes, computed<getTag>(),           readOnly(reasons::referencesHaveSameName),      Choices::None, 310,   L"What the attribute is called."},
  { 22, L"PromptString", L"Prompt",    VT_BSTR, Category::Attributes, storedText(3, definition),    writable,                                       Choices::None, 320,   L"What the person who places the block is asked."},
  { 23, L"Invisible",    L"Invisible", VT_BOOL, Category::Attributes, storedBit(70, definition, 1), writable,                                       Choices::None, 330,   L"Whether the attribute is not drawn."},
  { 24, L"Constant",     L"Constant",  VT_BOOL, Category::Attributes, storedBit(70, definition, 2), readOnly(reasons::referencesWouldGainOrLoseIt), Choices::None, 340,   L"Whether the text is the same in every reference."},
  { 25, L"Verify",       L"Verify",    VT_BOOL, Category::Attributes, storedBit(70, definition, 4), writable,                                       Choices::None, 350,   L"Whether the text is asked for twice when the block is placed."},
  { 26, L"Preset",       L"Preset",    VT_BOOL, Category::Attributes, storedBit(70, definition, 8), writable,                                       Choices::None, 360,   L"Whether the text is not asked for when the block is placed."},
};
// clang-format on

constexpr const std::span<const PropertyRow>* families[] = {&singleLineRows};

}  // namespace
}  // namespace attributeDefinitions

constinit const AutomationClass classes::VeltAttributeDefinition = {
    .clsid = CLSID_VeltAttributeDefinition,
    .name = L"VeltAttributeDefinition",
    .label = L"Attribute Definition",
    .dxfName = "ATTDEF",
    .help = L"What a block asks for when it is placed.",
    .general = &entityRows,
    .families = attributeDefinitions::families,
    .rows = attributeDefinitions::rows,
};

}  // namespace velt::automation
