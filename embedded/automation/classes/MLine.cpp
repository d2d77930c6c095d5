#include <cstdint>
#include <string>
#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/PointList.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace multilines {
namespace {

using platform::Category;

// clang-format off
constexpr EnumMember multilineJustificationMembers[] = {
  // value  name               label
  { 0,      L"Top",            L"Top"},
  { 1,      L"Zero",           L"Zero"},
  { 2,      L"Bottom",         L"Bottom"},
};
constexpr UserType multilineJustification = {L"VeltMultilineJustification", L"Which of its lines a multiline was drawn along.", VT_I4, multilineJustificationMembers};
// clang-format on

constexpr const char* mline = "AcDbMline";

std::wstring getStyleName(const Subject& subject) {
  return subject.lens().name(2, mline, L"STANDARD");
}

std::int32_t getJustification(const Subject& subject) {
  const std::int64_t stored = subject.lens().integer(70, mline, 0);
  return static_cast<std::int32_t>(stored >= 0 && stored <= 2 ? stored : 0);
}

std::vector<Vector3> getVertices(const Subject& subject) {
  return storedPoints(subject, 11, mline);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name              label             type                    category                   access                         writability                             choices               weight help
  {  1, L"StyleName",     L"Style",         VT_BSTR,                Category::Misc,            computed<getStyleName>(),      readOnly(reasons::linesStored),         Choices::None,        110,   L"Name of the style."},
  {  2, L"Scale",         L"Scale",         types::noUnits,         Category::Misc,            storedReal(40, mline, 1),      readOnly(reasons::linesStored),         Choices::None,        120,   L"Distance of the lines, relative to the style."},
  {  3, L"Justification", L"Justification", multilineJustification, Category::Misc,            computed<getJustification>(),  readOnly(reasons::linesStored),         Choices::Enumeration, 130,   L"Which of its lines it was drawn along."},
  {  4, L"Closed",        L"Closed",        VT_BOOL,                Category::Misc,            storedBit(71, mline, 2),       readOnly(reasons::jointsStored),        Choices::None,        140,   L"Whether the last vertex leads back to the first."},
  {  5, L"Vertex",        L"Vertex",        VT_VARIANT,             Category::Geometry,        computedPoints<getVertices>(), readOnly(reasons::jointsStored),        Choices::None,        150,   L"The vertices."},
  {  6, L"Normal",        L"Normal",        VT_VARIANT,             Category::Visualization3D, computedPoint<getNormal>(),    readOnly(reasons::verticesWouldFollow), Choices::None,        160,   L"Upright on the plane of the multiline."},
};
// clang-format on

}  // namespace
}  // namespace multilines

constinit const AutomationClass classes::VeltMLine = {
    .clsid = CLSID_VeltMLine,
    .name = L"VeltMLine",
    .label = L"Multiline",
    .dxfName = "MLINE",
    .help = L"Several lines that run side by side.",
    .general = &entityRows,
    .rows = multilines::rows,
};

}  // namespace velt::automation
