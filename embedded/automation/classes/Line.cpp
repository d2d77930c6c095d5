#include <cmath>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace lines {
namespace {

using platform::Category;

constexpr const char* line = "AcDbLine";

Vector3 getDelta(const Subject& subject) {
  return subject.point(11, line) - subject.point(10, line);
}

double getLength(const Subject& subject) {
  return length(getDelta(subject));
}

double getAngle(const Subject& subject) {
  const Vector3 delta = getDelta(subject);
  return normalizedAngle(std::atan2(delta.y, delta.x));
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name           label         type             category                   access                               writability                            choices        weight help
  {  1, L"Thickness",  L"Thickness", types::distance, Category::General,         storedReal(39, line).keepingShape(), writable,                              Choices::None,  90,   L"How far the line is pulled along its normal."},
  {  2, L"StartPoint", L"Start",     VT_VARIANT,      Category::Geometry,        worldPoint(10, line),                writable,                              Choices::None, 110,   L"Where the line begins."},
  {  3, L"EndPoint",   L"End",       VT_VARIANT,      Category::Geometry,        worldPoint(11, line),                writable,                              Choices::None, 120,   L"Where the line ends."},
  {  4, L"Delta",      L"Delta",     VT_VARIANT,      Category::Geometry,        computedPoint<getDelta>(),           readOnly(reasons::followsFromBoth),    Choices::None, 130,   L"From the start to the end."},
  {  5, L"Length",     L"Length",    types::distance, Category::Geometry,        computed<getLength>(),               readOnly(reasons::followsFromBoth),    Choices::None, 140,   L"From the start to the end."},
  {  6, L"Angle",      L"Angle",     types::angle,    Category::Geometry,        computed<getAngle>(),                readOnly(reasons::followsFromItsEnds), Choices::None, 150,   L"Direction of the line, seen from above."},
  {  7, L"Normal",     L"Normal",    VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),          readOnly(reasons::endsWouldFollow),    Choices::None, 160,   L"Direction of the thickness."},
};
// clang-format on

}  // namespace
}  // namespace lines

constinit const AutomationClass classes::VeltLine = {
    .clsid = CLSID_VeltLine,
    .name = L"VeltLine",
    .label = L"Line",
    .dxfName = "LINE",
    .help = L"A straight line between two points.",
    .general = &entityRows,
    .rows = lines::rows,
};

}  // namespace velt::automation
