#include <cstdint>
#include <string>
#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/PointList.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace {

using platform::Category;

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
  // id name              label             type                           category                   access                               choices               weight help
  { 1, L"StyleName",     L"Style",         VT_BSTR,                       Category::Misc,            computed<getStyleName>(),            Choices::None,        110,   L"Name of the style. Read-only: the lines are stored and would stay what they are."},
  { 2, L"Scale",         L"Scale",         types::noUnits,                Category::Misc,            storedReal(40, mline, 1).readOnly(), Choices::None,        120,   L"Distance of the lines, relative to the style. Read-only: the lines are stored and would stay what they are."},
  { 3, L"Justification", L"Justification", types::multilineJustification, Category::Misc,            computed<getJustification>(),        Choices::Enumeration, 130,   L"Which of its lines it was drawn along. Read-only: the lines are stored and would stay what they are."},
  { 4, L"Closed",        L"Closed",        VT_BOOL,                       Category::Misc,            storedBit(71, mline, 2).readOnly(),  Choices::None,        140,   L"Whether the last vertex leads back to the first. Read-only: the joints are stored and would stay what they are."},
  { 5, L"Vertex",        L"Vertex",        VT_VARIANT,                    Category::Geometry,        computedPoints<getVertices>(),                          Choices::None,        150,   L"The vertices. Read-only: the joints are stored and would stay what they are."},
  { 6, L"Normal",        L"Normal",        VT_VARIANT,                    Category::Visualization3D, computedPoint<getNormal>(),          Choices::None,        160,   L"Upright on the plane of the multiline. Read-only: the vertices would have to follow it."},
};
// clang-format on

}  // namespace

constinit const AutomationClass classes::VeltMLine = {
    CLSID_VeltMLine, L"VeltMLine", L"Multiline", "MLINE", L"Several lines that run side by side.",
    &entityRows,     rows,
};

}  // namespace velt::automation
