#include <cstdint>
#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/Arrowheads.h"
#include "embedded/automation/dimensions/DimensionTypes.h"
#include "embedded/automation/dimensions/StyleAccess.h"
#include "embedded/automation/dimensions/StyleName.h"
#include "embedded/automation/dimensions/StyleText.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/leaders/LeaderTypes.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/PointList.h"
#include "embedded/automation/model/Sameness.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace leaders {
namespace {

using platform::Category;

constexpr const char* leader = "AcDbLeader";

// Two flags make four members.
std::int32_t getType(const Subject& subject) {
  const database::Lens lens = subject.lens();
  const bool isSpline = lens.integer(72, leader, 0) == 1;
  const bool hasArrow = lens.integer(71, leader, 1) != 0;
  return (isSpline ? 1 : 0) + (hasArrow ? 2 : 0);
}

void putType(const Subject& subject, const std::int32_t& type) {
  Editor editor(subject);
  editor.integer(72, leader, type % 2, 0);
  editor.integer(71, leader, type / 2, 1);
}

std::int32_t getAnnotation(const Subject& subject) {
  constexpr std::int64_t nothing = 3;
  const std::int64_t stored = subject.lens().integer(73, leader, nothing);
  return static_cast<std::int32_t>(stored >= 0 && stored <= nothing ? stored : nothing);
}

// The place of a text is stored with the text.
constexpr Obstacle leadsToText = {
    .where = L"the leader leads to a text, which would have to move.",
    .reasonFor =
        [](const Subject& subject) {
          return leaderLeadsToText(subject) ? &reasons::leaderTextWouldMove : nullptr;
        },
};

std::vector<Vector3> getVertices(const Subject& subject) {
  return storedPoints(subject, 10, leader);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id   name                     label                   type                     category                   access                                                                                               writability                             choices               weight help
  {   64, L"Type",                 L"Type",                types::leaderType,       Category::Misc,            computed<getType, putType>(),                                                                        writable,                               Choices::Enumeration, 110,   L"Whether the leader is straight, and whether it has an arrowhead."},
  { 1542, L"DimStyle",             L"Dim style",           VT_BSTR,                 Category::Misc,            computed<getDimStyle, putDimStyle>(),                                                                writable,                               Choices::DimStyles,   120,   L"Name of the dimension style."},
  {   65, L"Annotation",           L"Annotation",          types::leaderAnnotation, Category::Misc,            computed<getAnnotation>(),                                                                           readOnly(reasons::entityOfItsOwn),      Choices::Enumeration, 130,   L"What the leader leads to."},
  { 1553, L"Arrow",                L"Arrow",               types::arrowhead,        Category::LinesAndArrows,  computed<getLeaderArrowhead, putLeaderArrowhead>().from(variables::leaderArrowhead.since),           writable,                               Choices::Enumeration, 140,   L"What stands at the end of the leader."},
  {   69, L"ArrowheadSize",        L"Arrow size",          types::distance,         Category::LinesAndArrows,  styleReal(variables::arrowheadSize).notNegative(),                                                   writable,                               Choices::None,        150,   L"Size of the arrowhead, before the overall scale."},
  { 1543, L"DimensionLineWeight",  L"Dim line lineweight", types::lineweight,       Category::LinesAndArrows,  styleMember(variables::dimensionLineWeight).keepingShape(),                                          writable,                               Choices::Enumeration, 160,   L"Width of the line on paper."},
  { 1550, L"ArrowheadBlock",       L"Arrow block",         VT_BSTR,                 Category::LinesAndArrows,  computed<getLeaderArrowheadBlock, putLeaderArrowheadBlock>().from(variables::leaderArrowhead.since).comparedBy(isSameName), writable,                               Choices::None,        170,   L"Block that is the arrowhead; empty for the usual one."},
  {   13, L"DimensionLineColor",   L"Dim line color",      types::color,            Category::LinesAndArrows,  styleColor(variables::dimensionLineColor).keepingShape(),                                            writable,                               Choices::Colors,      180,   L"Color of the line."},
  { 1549, L"TextGap",              L"Text offset",         types::distance,         Category::Text,            computed<getTextGap, putTextGap>().notNegative(),                                                    refusedWhere(leadsToText),              Choices::None,        190,   L"Room around the text."},
  { 1554, L"VerticalTextPosition", L"Text pos vert",       types::verticalPosition, Category::Text,            styleMember(variables::verticalPosition),                                                            refusedWhere(leadsToText),              Choices::Enumeration, 200,   L"Where the text stands against the line."},
  {  101, L"Vertex",               L"Vertex",              VT_VARIANT,              Category::Geometry,        computedPoints<getVertices>(),                                                                       readOnly(reasons::endWouldLeaveText),   Choices::None,        210,   L"The vertices, from the arrowhead on."},
  {  102, L"HasHookLine",          L"Hook line",           VT_BOOL,                 Category::Misc,            storedBit(75, leader, 1),                                                                            readOnly(reasons::followsFromVertices), Choices::None,        220,   L"Whether a short piece leads to the text."},
  {  103, L"Normal",               L"Normal",              VT_VARIANT,              Category::Visualization3D, computedPoint<getNormal>(),                                                                          readOnly(reasons::verticesWouldFollow), Choices::None,        230,   L"Upright on the plane of the leader."},
};
// clang-format on

}  // namespace
}  // namespace leaders

constinit const AutomationClass classes::VeltLeader = {
    .clsid = CLSID_VeltLeader,
    .name = L"VeltLeader",
    .label = L"Leader",
    .dxfName = "LEADER",
    .help = L"A line with an arrowhead that leads to a text.",
    .general = &entityRows,
    .rows = leaders::rows,
};

}  // namespace velt::automation
