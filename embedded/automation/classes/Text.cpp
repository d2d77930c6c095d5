#include <array>
#include <string>

#include "embedded/automation/Access.h"
#include "embedded/automation/ClassList.h"
#include "embedded/automation/HostIds.h"
#include "embedded/automation/classes/General.h"

namespace velt::automation {
namespace {

using palette::Category;

constexpr const char* text = "AcDbText";

std::wstring getStyle(const Subject& subject) {
  return subject.lens().name(7, text, L"Standard");
}

/// The drawing stores across and up apart; the members of the enumeration name each pair of them.
constexpr std::int32_t firstOfRow[] = {0, 12, 9,
                                       6};  // by what is stored for up: baseline, bottom, middle, top

std::int32_t getJustify(const Subject& subject) {
  const database::Lens lens = subject.lens();
  const std::int64_t across = lens.integer(72, text, 0);
  const std::int64_t up = lens.integer(73, text, 0);
  if (across < 0 || across > 5) return 0;
  // Aligned, middle and fit have no rows.
  if (up < 1 || up > 3 || across > 2) return static_cast<std::int32_t>(across);
  return firstOfRow[up] + static_cast<std::int32_t>(across);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name                   label              type                     category                   access                        choices               weight  help
  {  1, L"Thickness",           L"Thickness",      types::distance,         Category::General,         storedReal(39, text),         Choices::None,          90, L"How far the text is pulled along its normal."},
  {  2, L"TextString",          L"Contents",       VT_BSTR,                 Category::Text,            storedText(1, text),          Choices::None,         110, L"The wording, with its codes."},
  {  3, L"Style",               L"Style",          VT_BSTR,                 Category::Text,            computed<getStyle>(),         Choices::TextStyles,   120, L"Name of the text style."},
  {  4, L"Justify",             L"Justify",        types::textJustification, Category::Text,           computed<getJustify>(),       Choices::Enumeration,  130, L"Where the points of the text lie against it."},
  {  5, L"Height",              L"Height",         types::distance,         Category::Text,            storedReal(40, text),         Choices::None,         140, L"Height of capital letters."},
  {  6, L"Rotation",            L"Rotation",       types::angle,            Category::Text,            storedDirection(50, text),    Choices::None,         150, L"Direction of the text in its plane."},
  {  7, L"ScaleFactor",         L"Width factor",   types::noUnits,          Category::Text,            storedReal(41, text, 1),      Choices::None,         160, L"How much wider than usual the characters are."},
  {  8, L"ObliqueAngle",        L"Obliquing",      types::angle,            Category::Text,            storedDegrees(51, text),      Choices::None,         170, L"How far the characters lean to the right."},
  {  9, L"InsertionPoint",      L"Position",       VT_VARIANT,              Category::Geometry,        objectPoint(10, text),        Choices::None,         180, L"Left end of the text's base line."},
  { 10, L"TextAlignmentPoint",  L"Text alignment", VT_VARIANT,              Category::Geometry,        objectPoint(11, text),        Choices::None,         190, L"The point that the justification is about; without meaning for a text that is justified left."},
  { 11, L"UpsideDown",          L"Upside down",    VT_BOOL,                 Category::Misc,            storedBit(71, text, 4),       Choices::None,         200, L"Whether the text stands on its head."},
  { 12, L"Backward",            L"Backward",       VT_BOOL,                 Category::Misc,            storedBit(71, text, 2),       Choices::None,         210, L"Whether the text is mirrored."},
  { 13, L"Normal",              L"Normal",         VT_VARIANT,              Category::Visualization3D, computedPoint<getNormal>(),   Choices::None,         220, L"Upright on the text's plane. Read-only: the points would have to follow it."},
};
// clang-format on

}  // namespace

constinit const AutomationClass textClass = {
    CLSID_VeltText, L"VeltText", L"Text", "TEXT", L"A single line of text.", &entityRows, rows,
};

}  // namespace velt::automation
