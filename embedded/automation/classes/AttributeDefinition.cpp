#include <string>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/texts/SingleLineText.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace {

using platform::Category;

constexpr const char* definition = "AcDbAttributeDefinition";

std::wstring getTag(const Subject& subject) {
  return subject.lens().name(2, definition);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name             label         type     category              access                                   choices        weight help
  { 21, L"TagString",    L"Tag",       VT_BSTR, Category::Attributes, computed<getTag>(),                      Choices::None, 310,   L"What the attribute is called. Read-only: the references of the block have the same name for it."},
  { 22, L"PromptString", L"Prompt",    VT_BSTR, Category::Attributes, storedText(3, definition),               Choices::None, 320,   L"What the person who places the block is asked."},
  { 23, L"Invisible",    L"Invisible", VT_BOOL, Category::Attributes, storedBit(70, definition, 1),            Choices::None, 330,   L"Whether the attribute is not drawn."},
  { 24, L"Constant",     L"Constant",  VT_BOOL, Category::Attributes, storedBit(70, definition, 2).readOnly(), Choices::None, 340,   L"Whether the text is the same in every reference. Read-only: references would have to gain or lose it."},
  { 25, L"Verify",       L"Verify",    VT_BOOL, Category::Attributes, storedBit(70, definition, 4),            Choices::None, 350,   L"Whether the text is asked for twice when the block is placed."},
  { 26, L"Preset",       L"Preset",    VT_BOOL, Category::Attributes, storedBit(70, definition, 8),            Choices::None, 360,   L"Whether the text is not asked for when the block is placed."},
};
// clang-format on

constexpr const std::span<const PropertyRow>* families[] = {&singleLineRows};

}  // namespace

constinit const AutomationClass classes::VeltAttributeDefinition = {
    CLSID_VeltAttributeDefinition,
    L"VeltAttributeDefinition",
    L"Attribute Definition",
    "ATTDEF",
    L"What a block asks for when it is placed.",
    &entityRows,
    rows,
    nullptr,
    families,
};

}  // namespace velt::automation
