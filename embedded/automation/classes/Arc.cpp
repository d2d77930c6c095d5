#include <cmath>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EllipticalArc.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace arcs {
namespace {

using platform::Category;

constexpr const char* circle = "AcDbCircle";
constexpr const char* arc = "AcDbArc";

double radiusOf(const Subject& subject) {
  return subject.lens().real(40, circle, 0);
}

double endOf(const Subject& subject, int code) {
  return radians(subject.lens().real(code, arc, 0));
}

// Of one end; of two that coincide readers make nothing, or a full circle.
template <int Code, int OtherCode>
void putEnd(const Subject& subject, const double& angle) {
  const double direction = normalizedAngle(angle);
  const double other = normalizedAngle(endOf(subject, OtherCode));
  if (normalizedAngle(endOf(subject, Code)) == direction) return;
  if (direction == other) throw Refusal(E_INVALIDARG, L"The ends of an arc cannot coincide.");
  Editor(subject).real(Code, arc, storedDegreesOf(direction));
}

Vector3 pointOf(const Subject& subject, double direction) {
  const database::Lens lens = subject.lens();
  const double radius = radiusOf(subject);
  const Vector3 reach{radius * std::cos(direction), radius * std::sin(direction), 0};
  return frameOf(lens, circle).toWorld(pointAt(lens, 10, circle) + reach);
}

Vector3 getStartPoint(const Subject& subject) {
  return pointOf(subject, endOf(subject, 50));
}

Vector3 getEndPoint(const Subject& subject) {
  return pointOf(subject, endOf(subject, 51));
}

double getTotalAngle(const Subject& subject) {
  return sweepBetween(endOf(subject, 50), endOf(subject, 51));
}

double getArcLength(const Subject& subject) {
  return radiusOf(subject) * getTotalAngle(subject);
}

double getArea(const Subject& subject) {
  const double radius = radiusOf(subject);
  return segmentArea(radius, radius, getTotalAngle(subject));
}

void putArea(const Subject& subject, const double& area) {
  const double ofUnit = segmentArea(1, 1, getTotalAngle(subject));
  if (!(ofUnit > 0)) throw Refusal(E_FAIL, L"The arc is too short to bound an area.");
  const double radius = std::sqrt(area / ofUnit);
  requireWithin(Limit::Positive, radius);  // a number too small for the drawing may have become 0 on the way
  Editor(subject).real(40, circle, radius);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name           label           type             category                   access                                               writability                                         choices        weight help
  {  1, L"Thickness",  L"Thickness",   types::distance, Category::General,         storedReal(39, circle).keepingShape(),               writable,                                           Choices::None,  90,   L"How far the arc is pulled along its normal."},
  {  2, L"StartPoint", L"Start",       VT_VARIANT,      Category::Geometry,        computedPoint<getStartPoint>(),                      readOnly(reasons::followsFromCenterRadiusAndAngle), Choices::None, 110,   L"Where the arc begins."},
  {  3, L"Center",     L"Center",      VT_VARIANT,      Category::Geometry,        objectPoint(10, circle),                             writable,                                           Choices::None, 120,   L"Center of the arc."},
  {  4, L"EndPoint",   L"End",         VT_VARIANT,      Category::Geometry,        computedPoint<getEndPoint>(),                        readOnly(reasons::followsFromCenterRadiusAndAngle), Choices::None, 130,   L"Where the arc ends."},
  {  5, L"Radius",     L"Radius",      types::distance, Category::Geometry,        storedReal(40, circle).positive(),                   writable,                                           Choices::None, 140,   L"Radius of the arc."},
  {  6, L"StartAngle", L"Start angle", types::angle,    Category::Geometry,        writtenBy<putEnd<50, 51>>(storedDirection(50, arc)), writable,                                           Choices::None, 150,   L"Direction from the center to the start, in the plane of the arc."},
  {  7, L"EndAngle",   L"End angle",   types::angle,    Category::Geometry,        writtenBy<putEnd<51, 50>>(storedDirection(51, arc)), writable,                                           Choices::None, 160,   L"Direction from the center to the end, in the plane of the arc."},
  {  8, L"TotalAngle", L"Total angle", types::angle,    Category::Geometry,        computed<getTotalAngle>(),                           readOnly(reasons::followsFromItsEnds),              Choices::None, 170,   L"Angle that the arc spans."},
  {  9, L"ArcLength",  L"Arc length",  types::distance, Category::Geometry,        computed<getArcLength>(),                            readOnly(reasons::followsFromRadiusAndAngles),      Choices::None, 180,   L"Length along the arc."},
  { 10, L"Area",       L"Area",        VT_R8,           Category::Geometry,        computed<getArea, putArea>().positive(),             writable,                                           Choices::None, 190,   L"Between the arc and its chord; the radius follows it."},
  { 11, L"Normal",     L"Normal",      VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),                          readOnly(reasons::centerAndAnglesWouldFollow),      Choices::None, 200,   L"Upright on the arc's plane."},
};
// clang-format on

}  // namespace
}  // namespace arcs

constinit const AutomationClass classes::VeltArc = {
    .clsid = CLSID_VeltArc,
    .name = L"VeltArc",
    .label = L"Arc",
    .dxfName = "ARC",
    .help = L"A part of a circle.",
    .general = &entityRows,
    .rows = arcs::rows,
};

}  // namespace velt::automation
