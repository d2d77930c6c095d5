#include <algorithm>
#include <cstdint>
#include <string>
#include <variant>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/texts/SingleLineText.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace attributes {
namespace {

using platform::Category;

constexpr const char* attribute = "AcDbAttribute";

std::wstring getTag(const Subject& subject) {
  return subject.lens().name(2, attribute);
}

// The block reference that has the attribute, and stands before it.
std::uint32_t referenceOf(const Subject& subject) {
  return subject.drawing().document().records()[subject.record()].sequenceHead;
}

// What the reference has for a row that all entities share.
template <DISPID Id>
std::wstring getOfReference(const Subject& subject) {
  const std::uint32_t reference = referenceOf(subject);
  if (reference == dxf::none) return {};
  const Subject owner({&subject.drawing(), reference}, subject.drawing().idOf(reference), subject.kind());
  const auto row = std::find_if(entityRows.begin(), entityRows.end(),
                                [](const PropertyRow& it) { return it.dispId == Id; });
  return std::get<std::wstring>(row->access.get(owner, *row));
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                   label                           type                  category              access                            writability                                     choices        weight help
  { 21, L"TagString",          L"Tag",                         VT_BSTR,              Category::Attributes, computed<getTag>(),               readOnly(reasons::blockHasSameName),            Choices::None, 310,   L"What the attribute is called in its block."},
  { 22, L"Invisible",          L"Invisible",                   VT_BOOL,              Category::Attributes, storedBit(70, attribute, 1),      writable,                                       Choices::None, 320,   L"Whether the attribute is not drawn."},
  { 23, L"Constant",           L"Constant",                    VT_BOOL,              Category::Attributes, storedBit(70, attribute, 2),      readOnly(reasons::referencesWouldGainOrLoseIt), Choices::None, 330,   L"Whether the text is the same in every reference."},
  { 24, L"Verify",             L"Verify",                      VT_BOOL,              Category::Attributes, storedBit(70, attribute, 4),      writable,                                       Choices::None, 340,   L"Whether the text is asked for twice when the block is placed."},
  { 25, L"Preset",             L"Preset",                      VT_BOOL,              Category::Attributes, storedBit(70, attribute, 8),      writable,                                       Choices::None, 350,   L"Whether the text is not asked for when the block is placed."},
  { 26, L"ReferenceLayer",     L"Layer of the reference",      types::layerName,     Category::Misc,       computed<getOfReference<1281>>(), readOnly(reasons::belongsToReference),          Choices::None, 360,   L"Layer of the block reference, which an attribute on layer 0 follows."},
  { 27, L"ReferenceLinetype",  L"Linetype of the reference",   types::linetypeName,  Category::Misc,       computed<getOfReference<1282>>(), readOnly(reasons::belongsToReference),          Choices::None, 370,   L"Line type of the block reference, which an attribute by block follows."},
  { 28, L"ReferencePlotStyle", L"Plot style of the reference", types::plotStyleName, Category::Misc,       computed<getOfReference<1300>>(), readOnly(reasons::belongsToReference),          Choices::None, 380,   L"How the block reference is plotted."},
};
// clang-format on

constexpr const std::span<const PropertyRow>* families[] = {&singleLineRows};

}  // namespace
}  // namespace attributes

constinit const AutomationClass classes::VeltAttribute = {
    .clsid = CLSID_VeltAttribute,
    .name = L"VeltAttribute",
    .label = L"Attribute",
    .dxfName = "ATTRIB",
    .help = L"A text that a block reference has of its own.",
    .general = &entityRows,
    .families = attributes::families,
    .rows = attributes::rows,
};

}  // namespace velt::automation
