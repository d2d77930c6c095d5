#include <cmath>
#include <numbers>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EllipticalArc.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/model/Sameness.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace ellipses {
namespace {

using platform::Category;

constexpr const char* ellipse = "AcDbEllipse";

// Everything of an ellipse is stored in world coordinates; the normal only tells which way the minor axis points.

Vector3 majorOf(const database::Lens& lens) {
  return pointAt(lens, 11, ellipse, {1, 0, 0});
}

double ratioOf(const database::Lens& lens) {
  return lens.real(40, ellipse, 1);
}

Vector3 minorOf(const database::Lens& lens) {
  const Vector3 normal = direction(normalOf(lens, ellipse), {0, 0, 1});
  return ratioOf(lens) * cross(normal, majorOf(lens));
}

constexpr int startCode = 41;
constexpr int endCode = 42;
// What programs take for an ellipse at all.
constexpr double smallestRatio = 1e-6;

double startOf(const database::Lens& lens) {
  return lens.real(startCode, ellipse, 0);
}

double endOf(const database::Lens& lens) {
  return lens.real(endCode, ellipse, fullTurn);
}

Vector3 pointOf(const database::Lens& lens, double parameter) {
  return pointAt(lens, 10, ellipse) + std::cos(parameter) * majorOf(lens)
         + std::sin(parameter) * minorOf(lens);
}

Vector3 getMajorAxis(const Subject& subject) {
  return majorOf(subject.lens());
}

Vector3 getMinorAxis(const Subject& subject) {
  return minorOf(subject.lens());
}

double getMajorRadius(const Subject& subject) {
  return length(majorOf(subject.lens()));
}

double getMinorRadius(const Subject& subject) {
  return length(minorOf(subject.lens()));
}

void putRatio(const Subject& subject, const double& ratio) {
  if (ratio > 1) throw Refusal(E_INVALIDARG, L"The minor radius cannot be greater than the major one.");
  if (ratio < smallestRatio) throw Refusal(E_INVALIDARG, L"An ellipse cannot be that flat.");
  if (ratioOf(subject.lens()) != ratio) Editor(subject).real(40, ellipse, ratio);
}

// The minor radius stays what it is.
void putMajorRadius(const Subject& subject, const double& radius) {
  const database::Lens lens = subject.lens();
  const Vector3 major = majorOf(lens);
  const double before = length(major);
  if (before == radius) return;
  if (!(before > 0)) throw Refusal(E_FAIL, L"The ellipse has no major axis that could tell the direction.");
  const double ratio = ratioOf(lens) * before / radius;
  putRatio(subject, ratio);
  Editor(subject).point(11, ellipse, (radius / before) * major);
}

void putMinorRadius(const Subject& subject, const double& radius) {
  const double major = getMajorRadius(subject);
  if (!(major > 0)) throw Refusal(E_FAIL, L"The ellipse has no major axis.");
  putRatio(subject, radius / major);
}

// Of one end; of two that coincide readers make nothing, or a full ellipse, which one that is full already stays.
template <int Code>
void putParameter(const Subject& subject, const double& parameter) {
  const database::Lens lens = subject.lens();
  const double before = Code == startCode ? startOf(lens) : endOf(lens);
  const double other = Code == startCode ? endOf(lens) : startOf(lens);
  if (before == parameter) return;
  if (normalizedAngle(parameter) == normalizedAngle(other)) {
    throw Refusal(E_INVALIDARG, L"The ends of a part of an ellipse cannot coincide.");
  }
  Editor(subject).real(Code, ellipse, parameter);
}

template <int Code>
void putAngle(const Subject& subject, const double& angle) {
  const database::Lens lens = subject.lens();
  const double before = Code == startCode ? startOf(lens) : endOf(lens);
  const double direction = normalizedAngle(angle);
  if (normalizedAngle(angleOfParameter(before, ratioOf(lens))) == direction) return;
  putParameter<Code>(subject, normalizedAngle(parameterOfAngle(direction, ratioOf(lens))));
}

Vector3 getStartPoint(const Subject& subject) {
  return pointOf(subject.lens(), startOf(subject.lens()));
}

Vector3 getEndPoint(const Subject& subject) {
  return pointOf(subject.lens(), endOf(subject.lens()));
}

double getStartAngle(const Subject& subject) {
  const database::Lens lens = subject.lens();
  return normalizedAngle(angleOfParameter(startOf(lens), ratioOf(lens)));
}

double getEndAngle(const Subject& subject) {
  const database::Lens lens = subject.lens();
  return normalizedAngle(angleOfParameter(endOf(lens), ratioOf(lens)));
}

double getArea(const Subject& subject) {
  const database::Lens lens = subject.lens();
  return segmentArea(length(majorOf(lens)), length(minorOf(lens)), sweepBetween(startOf(lens), endOf(lens)));
}

// The ratio of the radii and the angles stay what they are.
void putArea(const Subject& subject, const double& area) {
  const double before = getArea(subject);
  if (before == area) return;
  if (!(before > 0)) throw Refusal(E_FAIL, L"The ellipse bounds no area that could become another.");
  const double factor = std::sqrt(area / before);
  requireWithin(Limit::Positive, factor);
  Editor(subject).point(11, ellipse, factor * majorOf(subject.lens()));
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name               label               type             category                   access                                                                    writability                                   choices        weight help
  {  1, L"StartPoint",     L"Start",           VT_VARIANT,      Category::Geometry,        computedPoint<getStartPoint>(),                                           readOnly(reasons::followsFromAxesAndStart),   Choices::None, 110,   L"Where the ellipse begins."},
  {  2, L"Center",         L"Center",          VT_VARIANT,      Category::Geometry,        worldPoint(10, ellipse),                                                  writable,                                     Choices::None, 120,   L"Center of the ellipse."},
  {  3, L"EndPoint",       L"End",             VT_VARIANT,      Category::Geometry,        computedPoint<getEndPoint>(),                                             readOnly(reasons::followsFromAxesAndEnd),     Choices::None, 130,   L"Where the ellipse ends."},
  {  4, L"MajorRadius",    L"Major radius",    types::distance, Category::Geometry,        computed<getMajorRadius, putMajorRadius>().positive(),                    writable,                                     Choices::None, 140,   L"Half the long axis; the minor radius stays."},
  {  5, L"MinorRadius",    L"Minor radius",    types::distance, Category::Geometry,        computed<getMinorRadius, putMinorRadius>().positive(),                    writable,                                     Choices::None, 150,   L"Half the short axis; the ratio follows it."},
  {  6, L"RadiusRatio",    L"Radius ratio",    types::noUnits,  Category::Geometry,        writtenBy<putRatio>(storedReal(40, ellipse, 1)).positive(),               writable,                                     Choices::None, 160,   L"The minor radius divided by the major one."},
  {  7, L"StartAngle",     L"Start angle",     types::angle,    Category::Geometry,        computed<getStartAngle, putAngle<startCode>>(),                           writable,                                     Choices::None, 170,   L"Direction from the center to the start, against the major axis."},
  {  8, L"EndAngle",       L"End angle",       VT_R8,           Category::Geometry,        computed<getEndAngle, putAngle<endCode>>().comparedBy(isSameAngle),       writable,                                     Choices::None, 180,   L"Direction from the center to the end, against the major axis."},
  {  9, L"StartParameter", L"Start parameter", types::angle,    Category::Geometry,        writtenBy<putParameter<startCode>>(storedReal(startCode, ellipse)),       writable,                                     Choices::None, 190,   L"Parameter of the start."},
  { 10, L"EndParameter",   L"End parameter",   types::angle,    Category::Geometry,        writtenBy<putParameter<endCode>>(storedReal(endCode, ellipse, fullTurn)), writable,                                     Choices::None, 200,   L"Parameter of the end."},
  { 11, L"MajorAxis",      L"Major axis",      VT_VARIANT,      Category::Geometry,        computedPoint<getMajorAxis>(),                                            readOnly(reasons::planeWouldFollow),          Choices::None, 210,   L"From the center to the end of the long axis."},
  { 12, L"MinorAxis",      L"Minor axis",      VT_VARIANT,      Category::Geometry,        computedPoint<getMinorAxis>(),                                            readOnly(reasons::followsFromLongAxis),       Choices::None, 220,   L"From the center to the end of the short axis."},
  { 13, L"Area",           L"Area",            VT_R8,           Category::Geometry,        computed<getArea, putArea>().positive(),                                  writable,                                     Choices::None, 230,   L"Of a part of an ellipse: between it and its chord; the radii follow it, their ratio stays."},
  { 14, L"Normal",         L"Normal",          VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),                                               readOnly(reasons::axesWouldFollow),           Choices::None, 240,   L"Upright on the plane of the ellipse."},
};
// clang-format on

}  // namespace
}  // namespace ellipses

constinit const AutomationClass classes::VeltEllipse = {
    .clsid = CLSID_VeltEllipse,
    .name = L"VeltEllipse",
    .label = L"Ellipse",
    .dxfName = "ELLIPSE",
    .help = L"An ellipse or a part of one.",
    .general = &entityRows,
    .rows = ellipses::rows,
};

}  // namespace velt::automation
