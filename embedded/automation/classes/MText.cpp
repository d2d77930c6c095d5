#include <cmath>
#include <string>
#include <vector>

#include "dxf/Numbers.h"
#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Followers.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/texts/TextTypes.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace multilineTexts {
namespace {

using platform::Category;

constexpr const char* mtext = "AcDbMText";

// Long texts stand in pieces of 250 bytes under code 3, the last one under 1. A piece may end within a character, so
// they are decoded together.
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

std::int32_t storedMember(const Subject& subject, int code, const UserType& type, std::int32_t otherwise) {
  return memberOr(type, subject.lens().integer(code, mtext, otherwise), otherwise);
}

std::int32_t getJustify(const Subject& subject) {
  return storedMember(subject, 71, types::attachment, 1);
}

std::int32_t getDirection(const Subject& subject) {
  return storedMember(subject, 72, types::drawingDirection, 1);
}

std::int32_t getLineSpaceStyle(const Subject& subject) {
  return storedMember(subject, 73, types::lineSpacingStyle, 1);
}

// Either an angle (50) or the direction of the text (11) is stored; of both the later one counts.
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

// From base line to base line, which is five thirds of the height at a factor of 1.
double getLineSpaceDistance(const Subject& subject) {
  const database::Lens lens = subject.lens();
  return lens.real(44, mtext, 1) * lens.real(40, mtext, 0) * 5 / 3;
}

bool getBackgroundFill(const Subject& subject) {
  constexpr std::int64_t ownColor = 1;
  constexpr std::int64_t windowColor = 2;
  return (subject.lens().integer(90, mtext, 0) & (ownColor | windowColor)) != 0;
}

// --- writing ---

// As a palette may give it: with line ends and tabs, which have codes of their own in the wording.
std::wstring codedWording(const std::wstring& given) {
  std::wstring coded;
  for (std::size_t i = 0; i < given.size(); ++i) {
    if (given[i] == L'\r' && i + 1 < given.size() && given[i + 1] == L'\n') continue;
    if (given[i] == L'\r' || given[i] == L'\n') {
      coded += L"\\P";
    } else if (given[i] == L'\t') {
      coded += L"^I";
    } else {
      coded += given[i];
    }
  }
  return coded;
}

bool isSameWording(const Value& put, const Value& got) {
  return codedWording(valueAs<std::wstring>(put)) == valueAs<std::wstring>(got);
}

// In the drawing's encoding, cut between characters.
std::vector<std::string> piecesOf(const std::wstring& wording, const dxf::Document& document) {
  constexpr std::size_t longest = 250;
  std::vector<std::string> pieces(1);
  for (std::size_t i = 0; i < wording.size(); ++i) {
    const std::string bytes = document.encoding().encodeAt(wording, i);
    if (pieces.back().size() + bytes.size() > longest) pieces.emplace_back();
    pieces.back() += bytes;
  }
  return pieces;
}

void putTextString(const Subject& subject, const std::wstring& given) {
  const std::wstring wording = codedWording(given);
  requireLine(subject.drawing(), wording);
  if (getTextString(subject) == wording) return;
  requireOwnWording(subject);
  const std::uint32_t record = subject.record();
  subject.drawing().edit(record, [&](dxf::Document& document) {
    constexpr int before[] = {10, 20, 30, 40, 41, 46, 71, 72};
    std::optional<std::size_t> place = document.view(record).insertionPoint(mtext, before);
    for (const int code : {1, 3}) {
      const std::vector<std::size_t> old = document.view(record).findAll(code, mtext);
      for (auto pair = old.rbegin(); pair != old.rend(); ++pair) {
        document.erase(record, *pair);
        place = *pair;
      }
    }
    if (!place) throw Refusal(E_FAIL, L"The entity lacks the part of its data that the text belongs in.");
    const std::vector<std::string> pieces = piecesOf(wording, document);
    for (std::size_t i = 0; i < pieces.size(); ++i)
      document.insert(record, *place + i, i + 1 == pieces.size() ? 1 : 3, pieces[i]);
  });
}

void putStyle(const Subject& subject, const std::wstring& name) {
  const database::TableEntry* const style = subject.drawing().textStyles().find(name);
  if (style == nullptr) throw Refusal(E_INVALIDARG, L"The drawing has no text style of that name.");
  Editor(subject).name(7, mtext, *style);
}

template <int Code>
void putMember(const Subject& subject, const std::int32_t& member) {
  Editor(subject).integer(Code, mtext, member, 1);
}

// Drawings from AC1032 on store place and direction a second time, with the columns of the text.
void putInColumns(const Subject& subject, int code, const Vector3& value) {
  const auto columns = subject.lens().view().embeddedObject();
  if (!columns) return;
  subject.drawing().edit(subject.record(), [&](dxf::Document& document) {
    const double coordinates[] = {value.x, value.y, value.z};
    for (std::size_t index = columns->first; index < columns->first + columns->count; ++index) {
      const int offset = document.view(subject.record()).code(index) - code;
      if (offset != 0 && offset != 10 && offset != 20) continue;
      const double coordinate = coordinates[static_cast<std::size_t>(offset / 10)];
      document.replace(subject.record(), index, dxf::formatReal(coordinate));
    }
  });
}

void putInsertionPoint(const Subject& subject, const Vector3& place) {
  Editor(subject).point(10, mtext, place);
  putInColumns(subject, 11, place);
}

void putRotation(const Subject& subject, const double& angle) {
  const double after = normalizedAngle(angle);
  if (getRotation(subject) == after) return;
  const auto clean = [](double part) { return std::abs(part) < 1e-15 ? 0.0 : part; };
  const Vector3 along{clean(std::cos(after)), clean(std::sin(after)), 0};
  const Vector3 direction = frameOf(subject.lens(), mtext).toWorld(along);
  Editor editor(subject);
  const bool isDirection = subject.lens().has(11, mtext);
  // Where both are stored, both have to say the same.
  if (!isDirection || subject.lens().has(50, mtext)) editor.real(50, mtext, storedDegreesOf(after));
  if (isDirection) editor.point(11, mtext, direction);
  putInColumns(subject, 10, direction);
}

void putLineSpaceFactor(const Subject& subject, const double& factor) {
  if (factor < 0.25 || factor > 4)
    throw Refusal(E_INVALIDARG, L"A line space factor lies between 0.25 and 4.");
  if (subject.lens().real(44, mtext, 1) != factor) Editor(subject).real(44, mtext, factor);
}

void putWidth(const Subject& subject, const double& width) {
  if (subject.lens().real(41, mtext, 0) == width) return;
  if (subject.lens().view().embeddedObject()) {
    throw Refusal(E_FAIL, L"The text is set in columns; its width follows from theirs.");
  }
  Editor(subject).real(41, mtext, width);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                  label                   type                     category                   access                                                                  writability                                    choices               weight help
  {  1, L"TextString",        L"Contents",            VT_BSTR,                 Category::Text,            computed<getTextString, putTextString>().keepingShape().comparedBy(isSameWording),                writable,                                      Choices::None,        110,   L"The wording, with its formatting codes."},
  {  2, L"Style",             L"Style",               VT_BSTR,                 Category::Text,            computed<getStyle, putStyle>().keepingShape(),                          writable,                                      Choices::TextStyles,  120,   L"Name of the text style."},
  {  3, L"Justify",           L"Justify",             types::attachment,       Category::Text,            computed<getJustify, putMember<71>>(),                                  writable,                                      Choices::Enumeration, 130,   L"Where the insertion point lies against the text box."},
  {  4, L"Direction",         L"Direction",           types::drawingDirection, Category::Text,            computed<getDirection, putMember<72>>(),                                writable,                                      Choices::Enumeration, 140,   L"How the lines of the text run."},
  {  5, L"Height",            L"Text height",         types::distance,         Category::Text,            storedReal(40, mtext).positive(),                                       writable,                                      Choices::None,        150,   L"Height of capital letters where the wording says nothing else."},
  {  6, L"Rotation",          L"Rotation",            types::angle,            Category::Text,            computed<getRotation, putRotation>(),                                   writable,                                      Choices::None,        160,   L"Direction of the text in its plane."},
  {  7, L"LineSpaceFactor",   L"Line space factor",   types::noUnits,          Category::Text,            writtenBy<putLineSpaceFactor>(storedReal(44, mtext, 1)).from("AC1015"), writable,                                      Choices::None,        170,   L"Distance of the lines, relative to five thirds of the text height."},
  {  8, L"LineSpaceDistance", L"Line space distance", types::distance,         Category::Text,            computed<getLineSpaceDistance>(),                                       readOnly(reasons::followsFromHeightAndFactor), Choices::None,        180,   L"Distance of the lines."},
  {  9, L"LineSpaceStyle",    L"Line space style",    types::lineSpacingStyle, Category::Text,            computed<getLineSpaceStyle, putMember<73>>().from("AC1015"),            writable,                                      Choices::Enumeration, 190,   L"Whether tall characters push lines apart."},
  { 10, L"BackgroundFill",    L"Background mask",     VT_BOOL,                 Category::Text,            computed<getBackgroundFill>(),                                          readOnly(reasons::boxWouldBeMade),             Choices::None,        200,   L"Whether a filled box hides what lies behind the text."},
  { 11, L"InsertionPoint",    L"Position",            VT_VARIANT,              Category::Geometry,        writtenBy<putInsertionPoint>(worldPoint(10, mtext)),                    writable,                                      Choices::None,        210,   L"Where the text is."},
  { 12, L"Width",             L"Defined width",       types::distance,         Category::Geometry,        writtenBy<putWidth>(storedReal(41, mtext)).notNegative(),               writable,                                      Choices::None,        220,   L"Width at which lines are broken; 0 for none."},
  { 13, L"Normal",            L"Normal",              VT_VARIANT,              Category::Visualization3D, computedPoint<getNormal>(),                                             readOnly(reasons::directionWouldFollow),       Choices::None,        230,   L"Upright on the text's plane."},
};
// clang-format on

}  // namespace
}  // namespace multilineTexts

constinit const AutomationClass classes::VeltMText = {
    .clsid = CLSID_VeltMText,
    .name = L"VeltMText",
    .label = L"MText",
    .dxfName = "MTEXT",
    .help = L"A text of several lines.",
    .general = &entityRows,
    .rows = multilineTexts::rows,
};

}  // namespace velt::automation
