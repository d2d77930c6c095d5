#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/geometry/SplineLength.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/PointList.h"
#include "embedded/automation/model/Refusal.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace splines {
namespace {

using platform::Category;

constexpr const char* spline = "AcDbSpline";
constexpr std::int64_t planarFlag = 8;

// --- the points ---

template <int Code>
std::vector<Vector3> getPoints(const Subject& subject) {
  return storedPoints(subject, Code, spline);
}

constexpr const wchar_t* controlLabels[] = {L"Control point X", L"Control point Y", L"Control point Z"};
constexpr const wchar_t* fitLabels[] = {L"Fit point X", L"Fit point Y", L"Fit point Z"};

std::int32_t getControlPointCount(const Subject& subject) {
  return static_cast<std::int32_t>(subject.lens().view().findAll(10, spline).size());
}

std::int32_t getFitPointCount(const Subject& subject) {
  return static_cast<std::int32_t>(subject.lens().view().findAll(11, spline).size());
}

// --- the curve ---

SpaceSpline curveOf(const Subject& subject) {
  const database::Lens lens = subject.lens();
  const ObjectFrame frame = frameOf(lens, spline);
  std::vector<Vector2> flat;
  std::vector<Vector2> height;
  for (const database::Point& point : lens.points(10, spline)) {
    const Vector3 inPlane = frame.toObject(vectorOf(point));
    flat.push_back({inPlane.x, inPlane.y});
    height.push_back({inPlane.z, 0});
  }
  const std::int64_t degree = lens.integer(71, spline, 3);
  const std::vector<double> knots = lens.reals(40, spline);
  const std::vector<double> weights = lens.reals(41, spline);
  auto flatCurve = automation::Spline::make(degree, knots, flat, weights);
  auto heightCurve = automation::Spline::make(degree, knots, height, weights);
  if (!flatCurve || !heightCurve) {
    throw Refusal(E_FAIL, L"The control points of the spline make no curve.");
  }
  return {*flatCurve, *heightCurve};
}

double getLength(const Subject& subject) {
  const SpaceSpline curve = curveOf(subject);
  Effort effort(curve.flat.pointCount() + curve.height.pointCount());
  return splineLength(curve, effort);
}

double getArea(const Subject& subject) {
  const SpaceSpline curve = curveOf(subject);
  const double height = curve.height.first().x;
  const double size = std::abs(height) + length(curve.flat.first());
  for (const auto& [from, to] : curve.height.spans()) {
    for (const double at : {from, (from + to) / 2, to}) {
      if (std::abs(curve.height.at(at).x - height) > 1e-6 * (1 + size))
        throw Refusal(E_FAIL, L"The spline does not lie in a plane.");
    }
  }
  // Seen from its first point, a straight line back to it encloses nothing more.
  const automation::Spline moved = curve.flat.movedBy(Vector2{} - curve.flat.first());
  Effort effort(moved.pointCount());
  const std::optional<double> integral = moved.boundaryIntegral(effort);
  if (!integral) throw Refusal(E_FAIL, L"The spline is too uneven to be integrated.");
  return std::abs(*integral);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                      label                        type             category            access                                          writability                                          choices        weight help
  {  1, L"ControlPoint",          L"Control points",           VT_VARIANT,      Category::Geometry, computedPoints<getPoints<10>, controlLabels>(), readOnly(reasons::fitPointsAndTangentsWouldFollow),  Choices::None, 110,   L"The points that the curve is drawn to."},
  {  2, L"NumberOfControlPoints", L"Number of control points", VT_I4,           Category::Geometry, computed<getControlPointCount>(),               readOnly(reasons::followsFromThem),                  Choices::None, 120,   L"How many control points there are."},
  {  3, L"Weight",                L"Weight",                   VT_R8,           Category::Geometry, storedReal(41, spline, 1),                      readOnly(reasons::fitPointsWouldFollow),             Choices::None, 130,   L"How strongly the first control point draws the curve."},
  {  4, L"FitPoint",              L"Fit points",               VT_VARIANT,      Category::Geometry, computedPoints<getPoints<11>, fitLabels>(),     readOnly(reasons::controlPointsWouldFollowThem),     Choices::None, 140,   L"The points that the curve was drawn through."},
  {  5, L"NumberOfFitPoints",     L"Number of fit points",     VT_I4,           Category::Geometry, computed<getFitPointCount>(),                   readOnly(reasons::followsFromThem),                  Choices::None, 150,   L"How many fit points there are."},
  {  6, L"Degree",                L"Degree",                   VT_I4,           Category::Misc,     storedInteger(71, spline, 3),                   readOnly(reasons::knotsAndControlPointsWouldBeMade), Choices::None, 160,   L"Degree of the curve."},
  {  7, L"FitTolerance",          L"Fit tolerance",            types::distance, Category::Misc,     storedReal(44, spline, 1e-10),                  readOnly(reasons::controlPointsWouldFollow),         Choices::None, 170,   L"How far from its fit points the curve may run."},
  {  8, L"StartTangent",          L"Start tangent",            VT_VARIANT,      Category::Geometry, worldPoint(12, spline),                         readOnly(reasons::controlPointsWouldFollow),         Choices::None, 180,   L"Direction in which the curve was made to begin."},
  {  9, L"EndTangent",            L"End tangent",              VT_VARIANT,      Category::Geometry, worldPoint(13, spline),                         readOnly(reasons::controlPointsWouldFollow),         Choices::None, 190,   L"Direction in which the curve was made to end."},
  { 10, L"Length",                L"Length",                   types::distance, Category::Geometry, computed<getLength>(),                          readOnly(reasons::followsFromControlPoints),         Choices::None, 200,   L"Along the curve."},
  { 11, L"Area",                  L"Area",                     VT_R8,           Category::Geometry, computed<getArea>(),                            readOnly(reasons::followsFromControlPoints),         Choices::None, 210,   L"Of an open spline: as if a straight line closed it."},
  { 12, L"Closed",                L"Closed",                   VT_BOOL,         Category::Misc,     storedBit(70, spline, 1),                       readOnly(reasons::followsFromControlPoints),         Choices::None, 220,   L"Whether the curve ends where it begins."},
  { 13, L"Periodic",              L"Periodic",                 VT_BOOL,         Category::Misc,     storedBit(70, spline, 2),                       readOnly(reasons::followsFromKnots),                 Choices::None, 230,   L"Whether the curve is smooth where it closes."},
  { 14, L"Rational",              L"Rational",                 VT_BOOL,         Category::Misc,     storedBit(70, spline, 4),                       readOnly(reasons::followsFromThem),                  Choices::None, 240,   L"Whether control points have weights."},
  { 15, L"Planar",                L"Planar",                   VT_BOOL,         Category::Misc,     storedBit(70, spline, planarFlag),              readOnly(reasons::followsFromControlPoints),         Choices::None, 250,   L"Whether the curve lies in a plane."},
};
// clang-format on

}  // namespace
}  // namespace splines

constinit const AutomationClass classes::VeltSpline = {
    .clsid = CLSID_VeltSpline,
    .name = L"VeltSpline",
    .label = L"Spline",
    .dxfName = "SPLINE",
    .help = L"A smooth curve.",
    .general = &entityRows,
    .rows = splines::rows,
};

}  // namespace velt::automation
