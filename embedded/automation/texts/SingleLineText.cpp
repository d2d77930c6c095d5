#include "embedded/automation/texts/SingleLineText.h"

#include <cmath>
#include <string>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Followers.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/texts/TextTypes.h"

namespace velt::automation {
namespace {

using platform::Category;

constexpr const char* text = "AcDbText";

std::wstring getStyle(const Subject& subject) {
  return subject.lens().name(7, text, L"Standard");
}

// The drawing stores across and up apart; the members of the enumeration name each pair of them, row by row. The rows
// by what is stored for up: baseline, bottom, middle, top.
constexpr std::int32_t firstOfRow[] = {0, 12, 9, 6};

// Attributes have it under another code, after a marker of their own.
bool isAttribute(const database::Lens& lens) {
  return lens.type() != "TEXT";
}

std::int64_t storedUp(const database::Lens& lens) {
  return isAttribute(lens) ? lens.integer(74, dxf::anySubclass, 0) : lens.integer(73, text, 0);
}

std::int32_t getJustify(const Subject& subject) {
  const database::Lens lens = subject.lens();
  const std::int64_t across = lens.integer(72, text, 0);
  const std::int64_t up = storedUp(lens);
  if (across < 0 || across > 5) return 0;
  // Aligned, middle and fit have no rows.
  if (up < 1 || up > 3 || across > 2) return static_cast<std::int32_t>(across);
  return firstOfRow[up] + static_cast<std::int32_t>(across);
}

// --- what a put has to keep in step ---
//
// A text that is justified left stands at its first point. Any other hangs on the second one: readers find the first
// anew from the letters, so it only has to stay near enough for those who do not. Between two points they find the
// height or the width of the letters anew, too.

constexpr std::int32_t left = 0;

constexpr bool isBetweenPoints(std::int32_t justification) {
  constexpr std::int32_t aligned = 3;
  constexpr std::int32_t fitted = 5;
  return justification == aligned || justification == fitted;
}

void requireFreeLetters(const Subject& subject) {
  if (!isBetweenPoints(getJustify(subject))) return;
  throw Refusal(E_FAIL, L"The text is fitted between two points; the size of its letters follows from them.");
}

Vector3 firstPoint(const Subject& subject) {
  return pointAt(subject.lens(), 10, text);
}

Vector3 secondPoint(const Subject& subject) {
  return pointAt(subject.lens(), 11, text);
}

// In the plane of the text.
Vector3 turned(const Vector3& arm, double angle) {
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  return {arm.x * cosine - arm.y * sine, arm.x * sine + arm.y * cosine, arm.z};
}

// Puts one of the points; a text that has both moves as a whole.
template <int Code>
void putPoint(const Subject& subject, const Vector3& place) {
  constexpr int otherCode = Code == 10 ? 11 : 10;
  const bool hasBoth = getJustify(subject) != left;
  const ObjectFrame frame = frameOf(subject.lens(), text);
  const Vector3 before = pointAt(subject.lens(), Code, text);
  if (frame.toWorld(before) == place) return;
  const Vector3 after = frame.toObject(place);
  const Vector3 other = pointAt(subject.lens(), otherCode, text);
  Editor editor(subject);
  editor.point(Code, text, after);
  if (hasBoth) editor.point(otherCode, text, other + (after - before));
}

void putRotation(const Subject& subject, const double& angle) {
  const double after = normalizedAngle(angle);
  const double before = radians(subject.lens().real(50, text, 0));
  if (normalizedAngle(before) == after) return;
  Editor editor(subject);
  editor.real(50, text, storedDegreesOf(after));
  const std::int32_t justification = getJustify(subject);
  if (justification == left) return;
  // The points keep their distance; the one that the text hangs on stays.
  const Vector3 first = firstPoint(subject);
  const Vector3 second = secondPoint(subject);
  if (isBetweenPoints(justification)) {
    editor.point(11, text, first + turned(second - first, after - before));
  } else {
    editor.point(10, text, second + turned(first - second, after - before));
  }
}

// The first point moves as the letters grow along the base line and across it.
void scaleFirstPoint(const Subject& subject, double along, double across) {
  if (getJustify(subject) == left || !std::isfinite(along) || !std::isfinite(across)) return;
  const double angle = radians(subject.lens().real(50, text, 0));
  const Vector3 second = secondPoint(subject);
  const Vector3 arm = turned(firstPoint(subject) - second, -angle);
  Editor(subject).point(10, text, second + turned({arm.x * along, arm.y * across, arm.z}, angle));
}

void putHeight(const Subject& subject, const double& height) {
  const double before = subject.lens().real(40, text, 0);
  if (before == height) return;
  requireFreeLetters(subject);
  Editor(subject).real(40, text, height);
  scaleFirstPoint(subject, height / before, height / before);
}

void putScaleFactor(const Subject& subject, const double& factor) {
  const double before = subject.lens().real(41, text, 1);
  if (before == factor) return;
  requireFreeLetters(subject);
  Editor(subject).real(41, text, factor);
  scaleFirstPoint(subject, factor / before, 1);
}

void putObliqueAngle(const Subject& subject, const double& angle) {
  constexpr double steepest = 85;
  const double before = radians(subject.lens().real(51, text, 0));
  if (before == angle) return;
  const double stored = storedDegreesOf(angle);
  if (std::abs(stored) > steepest) throw Refusal(E_INVALIDARG, L"Letters lean by 85 degrees at most.");
  Editor(subject).real(51, text, stored);
}

void putTextString(const Subject& subject, const std::wstring& wording) {
  requireLine(subject.drawing(), wording);
  if (subject.lens().text(1, text) == wording) return;
  requireOwnWording(subject);
  Editor(subject).text(1, text, wording);
}

void putStyle(const Subject& subject, const std::wstring& name) {
  const database::TableEntry* const style = subject.drawing().textStyles().find(name);
  if (style == nullptr) throw Refusal(E_INVALIDARG, L"The drawing has no text style of that name.");
  requireSingleLine(subject.drawing(), subject.record());
  Editor(subject).name(7, text, *style);
}

// Stands after the second of the two markers of the same name, where there are two.
void putUp(const Subject& subject, std::int64_t up) {
  if (isAttribute(subject.lens())) {
    const bool isValue = subject.lens().type() == "ATTRIB";
    Editor(subject).integer(74, isValue ? "AcDbAttribute" : "AcDbAttributeDefinition", up, 0);
    return;
  }
  const dxf::RecordView view = subject.lens().view();
  std::size_t markers = 0;
  std::size_t afterLast = 0;
  for (std::size_t index = 0; index < view.size(); ++index) {
    if (view.code(index) != 100 || dxf::trimmed(view.value(index)) != text) continue;
    ++markers;
    afterLast = index + 1;
  }
  if (up == 0 || markers < 2 || subject.lens().has(73, text)) {
    Editor(subject).integer(73, text, up, 0);
    return;
  }
  subject.drawing().edit(subject.record(), [&](dxf::Document& document) {
    document.insert(subject.record(), afterLast, 73, dxf::formatInteger(up));
  });
}

// The point that the text hangs on stays where it is, and the text moves around it.
void putJustify(const Subject& subject, const std::int32_t& justification) {
  const std::int32_t before = getJustify(subject);
  if (before == justification) return;
  if (isBetweenPoints(justification)) {
    throw Refusal(E_FAIL, L"A text is fitted between two points, and has one only.");
  }
  const bool hangsOnFirst = before == left || isBetweenPoints(before);
  const Vector3 anchor = hangsOnFirst ? firstPoint(subject) : secondPoint(subject);
  constexpr std::int32_t onBaseLine = 6;  // the first members have no row
  const std::int32_t row = justification < onBaseLine ? 0 : 3 - (justification - onBaseLine) / 3;
  const std::int32_t across = justification < onBaseLine ? justification : justification % 3;
  Editor editor(subject);
  editor.integer(72, text, across, 0);
  if (justification != left) editor.point(11, text, anchor);
  editor.point(10, text, anchor);
  putUp(subject, row);
}

const Reason* whyNoAlignmentPoint(const Subject& subject) {
  return getJustify(subject) == left ? &reasons::justifiedLeft : nullptr;
}

constexpr Obstacle isJustifiedLeft = {L"the text is justified left.", whyNoAlignmentPoint};

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                   label              type                      category                   access                                                         writability                           choices               weight help
  {  1, L"Thickness",          L"Thickness",      types::distance,          Category::General,         storedReal(39, text).keepingShape(),                           writable,                             Choices::None,         90,   L"How far the text is pulled along its normal."},
  {  2, L"TextString",         L"Contents",       VT_BSTR,                  Category::Text,            writtenBy<putTextString>(storedText(1, text)).keepingShape(),  writable,                             Choices::None,        110,   L"The wording, with its codes."},
  {  3, L"Style",              L"Style",          VT_BSTR,                  Category::Text,            computed<getStyle, putStyle>().keepingShape(),                 writable,                             Choices::TextStyles,  120,   L"Name of the text style."},
  {  4, L"Justify",            L"Justify",        types::textJustification, Category::Text,            computed<getJustify, putJustify>(),                            writable,                             Choices::Enumeration, 130,   L"Where the points of the text lie against it."},
  {  5, L"Height",             L"Height",         types::distance,          Category::Text,            writtenBy<putHeight>(storedReal(40, text)).positive(),         writable,                             Choices::None,        140,   L"Height of capital letters."},
  {  6, L"Rotation",           L"Rotation",       types::angle,             Category::Text,            writtenBy<putRotation>(storedDirection(50, text)),             writable,                             Choices::None,        150,   L"Direction of the text in its plane."},
  {  7, L"ScaleFactor",        L"Width factor",   types::noUnits,           Category::Text,            writtenBy<putScaleFactor>(storedReal(41, text, 1)).positive(), writable,                             Choices::None,        160,   L"How much wider than usual the characters are."},
  {  8, L"ObliqueAngle",       L"Obliquing",      types::angle,             Category::Text,            writtenBy<putObliqueAngle>(storedDegrees(51, text)),           writable,                             Choices::None,        170,   L"How far the characters lean to the right."},
  {  9, L"InsertionPoint",     L"Position",       VT_VARIANT,               Category::Geometry,        writtenBy<putPoint<10>>(objectPoint(10, text)),                writable,                             Choices::None,        180,   L"Left end of the text's base line."},
  { 10, L"TextAlignmentPoint", L"Text alignment", VT_VARIANT,               Category::Geometry,        writtenBy<putPoint<11>>(objectPoint(11, text)),                refusedWhere(isJustifiedLeft),        Choices::None,        190,   L"The point that the justification is about."},
  { 11, L"UpsideDown",         L"Upside down",    VT_BOOL,                  Category::Misc,            storedBit(71, text, 4),                                        writable,                             Choices::None,        200,   L"Whether the text stands on its head."},
  { 12, L"Backward",           L"Backward",       VT_BOOL,                  Category::Misc,            storedBit(71, text, 2),                                        writable,                             Choices::None,        210,   L"Whether the text is mirrored."},
  { 13, L"Normal",             L"Normal",         VT_VARIANT,               Category::Visualization3D, computedPoint<getNormal>(),                                    readOnly(reasons::pointsWouldFollow), Choices::None,        220,   L"Upright on the text's plane."},
};
// clang-format on

}  // namespace

const std::span<const PropertyRow> singleLineRows = rows;

}  // namespace velt::automation
