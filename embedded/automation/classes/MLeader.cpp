#include <cstdint>
#include <string>
#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/Arrowheads.h"
#include "embedded/automation/dimensions/DimensionTypes.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/leaders/LeaderTypes.h"
#include "embedded/automation/leaders/MultileaderRecord.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/PointList.h"
#include "embedded/automation/objects/ColorObject.h"
#include "embedded/automation/texts/TextTypes.h"
#include "embedded/database/Colors.h"
#include "embedded/database/NamedObjects.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace multileaders {
namespace {

using platform::Category;

using enum MultileaderPart;

template <int Code>
double getContentReal(const Subject& subject) {
  return MultileaderRecord(subject).real(Contents, Code, 0);
}

template <int Code>
bool getFlag(const Subject& subject) {
  return MultileaderRecord(subject).integer(Itself, Code, 0) != 0;
}

std::wstring getStyleName(const Subject& subject) {
  const std::wstring name =
      database::objectName(subject.drawing(), MultileaderRecord(subject).handle(Itself, 340));
  return name.empty() ? std::wstring(L"Standard") : name;
}

// --- leaders ---

std::int32_t getLeaderType(const Subject& subject) {
  return memberOr(types::multileaderLine, MultileaderRecord(subject).integer(Itself, 170, 1), 1);
}

OwnedDispatch getLeaderLineColor(const Subject& subject) {
  VkCmColor color;
  const std::int64_t stored = MultileaderRecord(subject).integer(Itself, 91, database::colorByBlock);
  color.setColor(database::colorNumber(stored).value_or(database::colorByBlock));
  return ColorObject::make(color);
}

std::wstring getLeaderLinetype(const Subject& subject) {
  const std::wstring name = database::entryName(subject.drawing(), subject.drawing().linetypes(),
                                                MultileaderRecord(subject).handle(Itself, 341));
  return name.empty() ? std::wstring(L"ByBlock") : name;
}

std::int32_t getLeaderLineweight(const Subject& subject) {
  return memberOr(types::lineweight, MultileaderRecord(subject).integer(Itself, 171, -2), -2);
}

std::wstring getArrowheadBlock(const Subject& subject) {
  return database::entryName(subject.drawing(), subject.drawing().blocks(),
                             MultileaderRecord(subject).handle(Itself, 342));
}

std::int32_t getArrow(const Subject& subject) {
  return arrowheadOfBlock(getArrowheadBlock(subject));
}

std::int32_t getLeaderCount(const Subject& subject) {
  return static_cast<std::int32_t>(MultileaderRecord(subject).count(Leader));
}

double getDoglegLength(const Subject& subject) {
  return MultileaderRecord(subject).real(Itself, 41, 0);
}

// --- contents ---

std::int32_t getContentType(const Subject& subject) {
  return memberOr(types::multileaderContent, MultileaderRecord(subject).integer(Itself, 172, 2), 2);
}

std::wstring getTextString(const Subject& subject) {
  return MultileaderRecord(subject).text(Contents, 304);
}

std::wstring getTextStyle(const Subject& subject) {
  const std::wstring name = database::entryName(subject.drawing(), subject.drawing().textStyles(),
                                                MultileaderRecord(subject).handle(Itself, 343));
  return name.empty() ? std::wstring(L"Standard") : name;
}

std::int32_t getDirection(const Subject& subject) {
  return memberOr(types::drawingDirection, MultileaderRecord(subject).integer(Contents, 172, 1), 1);
}

double getTextRotation(const Subject& subject) {
  return normalizedAngle(MultileaderRecord(subject).real(Contents, 42, 0));
}

std::wstring getContentBlockName(const Subject& subject) {
  return database::entryName(subject.drawing(), subject.drawing().blocks(),
                             MultileaderRecord(subject).handle(Itself, 344));
}

double getScaleFactor(const Subject& subject) {
  return MultileaderRecord(subject).real(Contents, 40, 1);
}

Vector3 getTextLocation(const Subject& subject) {
  return MultileaderRecord(subject).point(Contents, 12);
}

std::vector<Vector3> getVertices(const Subject& subject) {
  return MultileaderRecord(subject).vertices();
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                 label                  type                       category            access                            writability                         choices               weight help
  {  1, L"MLeaderStyle",     L"Multileader style",  VT_BSTR,                   Category::Misc,     computed<getStyleName>(),         readOnly(reasons::storedWithLines), Choices::None,        110,   L"Name of the style."},
  {  2, L"ScaleFactor",      L"Overall scale",      types::noUnits,            Category::Misc,     computed<getScaleFactor>(),       readOnly(reasons::storedWithLines), Choices::None,        120,   L"Scale of all sizes."},
  {  3, L"LeaderType",       L"Leader type",        types::multileaderLine,    Category::Leaders,  computed<getLeaderType>(),        readOnly(reasons::storedWithLines), Choices::Enumeration, 130,   L"How the lines are drawn."},
  {  4, L"LeaderLineColor",  L"Leader color",       VT_DISPATCH,               Category::Leaders,  computed<getLeaderLineColor>(),   readOnly(reasons::storedWithLines), Choices::Colors,      140,   L"Color of the lines."},
  {  5, L"LeaderLinetype",   L"Leader linetype",    types::linetypeName,       Category::Leaders,  computed<getLeaderLinetype>(),    readOnly(reasons::storedWithLines), Choices::Linetypes,   150,   L"Line type of the lines."},
  {  6, L"LeaderLineWeight", L"Leader lineweight",  types::lineweight,         Category::Leaders,  computed<getLeaderLineweight>(),  readOnly(reasons::storedWithLines), Choices::Enumeration, 160,   L"Width of the lines on paper."},
  {  7, L"Arrow",            L"Arrowhead",          types::arrowhead,          Category::Leaders,  computed<getArrow>(),             readOnly(reasons::storedWithLines), Choices::Enumeration, 170,   L"What stands at the ends of the lines."},
  {  8, L"ArrowheadBlock",   L"Arrowhead block",    VT_BSTR,                   Category::Leaders,  computed<getArrowheadBlock>(),    readOnly(reasons::storedWithLines), Choices::None,        180,   L"Block that is the arrowhead; empty for the usual one."},
  {  9, L"ArrowheadSize",    L"Arrowhead size",     types::distance,           Category::Leaders,  computed<getContentReal<140>>(),  readOnly(reasons::storedWithLines), Choices::None,        190,   L"Size of the arrowheads."},
  { 10, L"Landing",          L"Horizontal landing", VT_BOOL,                   Category::Leaders,  computed<getFlag<290>>(),         readOnly(reasons::storedWithLines), Choices::None,        200,   L"Whether the lines end at a landing."},
  { 11, L"DoglegLength",     L"Landing distance",   types::distance,           Category::Leaders,  computed<getDoglegLength>(),      readOnly(reasons::storedWithLines), Choices::None,        210,   L"Length of the piece between the lines and the contents."},
  { 12, L"LeaderCount",      L"Leader count",       VT_I4,                     Category::Leaders,  computed<getLeaderCount>(),       readOnly(reasons::followsFromThem), Choices::None,        220,   L"How many leaders there are."},
  { 13, L"ContentType",      L"Content type",       types::multileaderContent, Category::Misc,     computed<getContentType>(),       readOnly(reasons::storedWithLines), Choices::Enumeration, 230,   L"What the multileader shows."},
  { 14, L"TextString",       L"Contents",           VT_BSTR,                   Category::Text,     computed<getTextString>(),        readOnly(reasons::storedWithLines), Choices::None,        240,   L"The wording, with its formatting codes."},
  { 15, L"TextStyle",        L"Text style",         VT_BSTR,                   Category::Text,     computed<getTextStyle>(),         readOnly(reasons::storedWithLines), Choices::TextStyles,  250,   L"Name of the text style."},
  { 16, L"Height",           L"Height",             types::distance,           Category::Text,     computed<getContentReal<41>>(),   readOnly(reasons::storedWithLines), Choices::None,        260,   L"Height of the text."},
  { 17, L"Direction",        L"Direction",          types::drawingDirection,   Category::Text,     computed<getDirection>(),         readOnly(reasons::storedWithLines), Choices::Enumeration, 270,   L"How the lines of the text run."},
  { 18, L"Rotation",         L"Rotation",           types::angle,              Category::Text,     computed<getTextRotation>(),      readOnly(reasons::storedWithLines), Choices::None,        280,   L"Direction of the text."},
  { 19, L"Width",            L"Width",              types::distance,           Category::Text,     computed<getContentReal<43>>(),   readOnly(reasons::storedWithLines), Choices::None,        290,   L"Width at which lines are broken; 0 for none."},
  { 20, L"LandingGap",       L"Landing gap",        types::distance,           Category::Text,     computed<getContentReal<145>>(),  readOnly(reasons::storedWithLines), Choices::None,        300,   L"Room between the landing and the text."},
  { 21, L"TextFrame",        L"Text frame",         VT_BOOL,                   Category::Text,     computed<getFlag<292>>(),         readOnly(reasons::storedWithLines), Choices::None,        310,   L"Whether the text stands in a frame."},
  { 22, L"ContentBlockName", L"Source block",       VT_BSTR,                   Category::Block,    computed<getContentBlockName>(),  readOnly(reasons::storedWithLines), Choices::None,        320,   L"Block that the multileader shows; empty for a text."},
  { 23, L"TextLocation",     L"Text position",      VT_VARIANT,                Category::Geometry, computedPoint<getTextLocation>(), readOnly(reasons::storedWithLines), Choices::None,        330,   L"Where the text is."},
  { 24, L"Vertex",           L"Vertex",             VT_VARIANT,                Category::Geometry, computedPoints<getVertices>(),    readOnly(reasons::storedWithLines), Choices::None,        340,   L"The vertices of all lines."},
};
// clang-format on

}  // namespace
}  // namespace multileaders

constinit const AutomationClass classes::VeltMLeader = {
    .clsid = CLSID_VeltMLeader,
    .name = L"VeltMLeader",
    .label = L"Multileader",
    .dxfName = "MULTILEADER",
    .help = L"Leaders that lead to one text or block.",
    .general = &entityRows,
    .rows = multileaders::rows,
};

}  // namespace velt::automation
