#include <cmath>
#include <string>

#include "embedded/automation/Access.h"
#include "embedded/automation/ClassList.h"
#include "embedded/automation/EntityGeometry.h"
#include "embedded/automation/HostIds.h"
#include "embedded/automation/classes/General.h"
#include "embedded/automation/geometry/Angle.h"

namespace velt::automation {
namespace {

using palette::Category;

constexpr const char* mtext = "AcDbMText";

/// Long texts stand in pieces of 250 bytes under 3, the last one under 1. A piece may end within a character, so they
/// are decoded together.
std::wstring getTextString(const Subject& subject) {
  const database::Lens lens = subject.lens();
  std::string pieces;
  std::string last;
  lens.view().visit(mtext, [&](std::size_t index) {
    if (lens.view().code(index) == 3) pieces += lens.view().value(index);
    if (lens.view().code(index) == 1) last = lens.view().value(index);
    return true;
  });
  return subject.drawing().decode(pieces + last);
}

std::wstring getStyle(const Subject& subject) {
  return subject.lens().name(7, mtext, L"Standard");
}

std::int32_t memberOr(const Subject& subject, int code, const UserType& type, std::int32_t otherwise) {
  const EnumMember* member = findMember(type, subject.lens().integer(code, mtext, otherwise));
  return member == nullptr ? otherwise : member->value;
}

std::int32_t getJustify(const Subject& subject) {
  return memberOr(subject, 71, types::attachment, 1);
}

std::int32_t getDirection(const Subject& subject) {
  return memberOr(subject, 72, types::drawingDirection, 1);
}

std::int32_t getLineSpaceStyle(const Subject& subject) {
  return memberOr(subject, 73, types::lineSpacingStyle, 1);
}

/// Either an angle (50) or the direction of the text (11) is stored; of both the later one counts.
double getRotation(const Subject& subject) {
  const database::Lens lens = subject.lens();
  const std::optional<std::size_t> angle = lens.find(50, mtext);
  const std::optional<std::size_t> along = lens.find(11, mtext);
  if (along && (!angle || *along > *angle)) {
    const Vector3 inPlane = frameOf(lens, mtext).toObject(pointAt(lens, 11, mtext, {1, 0, 0}));
    return normalizedAngle(std::atan2(inPlane.y, inPlane.x));
  }
  return normalizedAngle(radians(lens.real(50, mtext, 0)));
}

/// From base line to base line, which is five thirds of the height at a factor of 1.
double getLineSpaceDistance(const Subject& subject) {
  const database::Lens lens = subject.lens();
  return lens.real(44, mtext, 1) * lens.real(40, mtext, 0) * 5 / 3;
}

bool getBackgroundFill(const Subject& subject) {
  constexpr std::int64_t ownColor = 1;
  constexpr std::int64_t windowColor = 2;
  return (subject.lens().integer(90, mtext, 0) & (ownColor | windowColor)) != 0;
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name                   label                  type                     category                   access                              choices               weight  help
  {  1, L"TextString",          L"Contents",           VT_BSTR,                 Category::Text,            computed<getTextString>(),          Choices::None,         110, L"The wording, with its formatting codes."},
  {  2, L"Style",               L"Style",              VT_BSTR,                 Category::Text,            computed<getStyle>(),               Choices::TextStyles,   120, L"Name of the text style."},
  {  3, L"Justify",             L"Justify",            types::attachment,       Category::Text,            computed<getJustify>(),             Choices::Enumeration,  130, L"Where the insertion point lies against the text box."},
  {  4, L"Direction",           L"Direction",          types::drawingDirection, Category::Text,            computed<getDirection>(),           Choices::Enumeration,  140, L"How the lines of the text run."},
  {  5, L"Height",              L"Text height",        types::distance,         Category::Text,            storedReal(40, mtext),              Choices::None,         150, L"Height of capital letters where the wording says nothing else."},
  {  6, L"Rotation",            L"Rotation",           types::angle,            Category::Text,            computed<getRotation>(),            Choices::None,         160, L"Direction of the text in its plane."},
  {  7, L"LineSpaceFactor",     L"Line space factor",  types::noUnits,          Category::Text,            storedReal(44, mtext, 1),           Choices::None,         170, L"Distance of the lines, relative to five thirds of the text height."},
  {  8, L"LineSpaceDistance",   L"Line space distance", types::distance,        Category::Text,            computed<getLineSpaceDistance>(),   Choices::None,         180, L"Distance of the lines. Read-only: it follows from height and factor."},
  {  9, L"LineSpaceStyle",      L"Line space style",   types::lineSpacingStyle, Category::Text,            computed<getLineSpaceStyle>(),      Choices::Enumeration,  190, L"Whether tall characters push lines apart."},
  { 10, L"BackgroundFill",      L"Background mask",    VT_BOOL,                 Category::Text,            computed<getBackgroundFill>(),      Choices::None,         200, L"Whether a filled box hides what lies behind the text."},
  { 11, L"InsertionPoint",      L"Position",           VT_VARIANT,              Category::Geometry,        worldPoint(10, mtext),              Choices::None,         210, L"Where the text is."},
  { 12, L"Width",               L"Defined width",      types::distance,         Category::Geometry,        storedReal(41, mtext),              Choices::None,         220, L"Width at which lines are broken; 0 for none."},
  { 13, L"Normal",              L"Normal",             VT_VARIANT,              Category::Visualization3D, computedPoint<getNormal>(),         Choices::None,         230, L"Upright on the text's plane. Read-only: the direction would have to follow it."},
};
// clang-format on

}  // namespace

constinit const AutomationClass mTextClass = {
    CLSID_VeltMText, L"VeltMText", L"MText", "MTEXT", L"A text of several lines.", &entityRows, rows,
};

}  // namespace velt::automation
