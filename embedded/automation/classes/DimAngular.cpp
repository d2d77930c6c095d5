#include <cmath>
#include <numbers>
#include <optional>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/DimensionGeometry.h"
#include "embedded/automation/dimensions/DimensionRows.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Refusal.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace angularDimensions {
namespace {

using platform::Category;

// Of the two measured lines, drawn out, in the plane; nothing for parallel ones.
std::optional<Vector2> crossing(const Subject& subject) {
  const auto flat = [&](int pointCode) {
    const Vector3 point = inDimensionPlane(subject, dimensionPointOf(subject, pointCode));
    return Vector2{point.x, point.y};
  };
  const Vector2 from = flat(13);
  const Vector2 first = flat(14) - from;
  const Vector2 second = flat(10) - flat(15);
  const double turn = cross(first, second);
  if (std::abs(turn) <= 1e-12 * length(first) * length(second)) return std::nullopt;
  return from + (cross(flat(15) - from, second) / turn) * first;
}

// Two lines make four angles, of which two are equal; the one that the arc runs through counts.
double getMeasurement(const Subject& subject) {
  const double first =
      directionInPlane(subject, dimensionPointOf(subject, 13), dimensionPointOf(subject, 14));
  const double second =
      directionInPlane(subject, dimensionPointOf(subject, 15), dimensionPointOf(subject, 10));
  const std::optional<Vector2> vertex = crossing(subject);
  if (!vertex) throw Refusal(E_FAIL, L"The lines that the dimension measures are parallel.");
  const Vector3 arcPoint = pointAt(subject.lens(), 16, dimension);
  const double through = std::atan2(arcPoint.y - vertex->y, arcPoint.x - vertex->x);
  const double between = std::fmod(normalizedAngle(second - first), std::numbers::pi);
  const double reach = std::fmod(normalizedAngle(through - first), std::numbers::pi);
  return reach <= between ? between : std::numbers::pi - between;
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name                   label                type          category                   access                      writability                                choices        weight help
  { 101, L"ExtLine1StartPoint", L"Ext line 1 start", VT_VARIANT,   Category::Geometry,        dimensionPoint(13),         readOnly(reasons::measurementWouldFollow), Choices::None, 1101,  L"Start of the first line."},
  { 102, L"ExtLine1EndPoint",   L"Ext line 1 end",   VT_VARIANT,   Category::Geometry,        dimensionPoint(14),         readOnly(reasons::measurementWouldFollow), Choices::None, 1102,  L"End of the first line."},
  { 103, L"ExtLine2StartPoint", L"Ext line 2 start", VT_VARIANT,   Category::Geometry,        dimensionPoint(15),         readOnly(reasons::measurementWouldFollow), Choices::None, 1103,  L"Start of the second line."},
  { 104, L"ExtLine2EndPoint",   L"Ext line 2 end",   VT_VARIANT,   Category::Geometry,        dimensionPoint(10),         readOnly(reasons::measurementWouldFollow), Choices::None, 1104,  L"End of the second line."},
  { 105, L"DimArcPoint",        L"Dim arc",          VT_VARIANT,   Category::Geometry,        objectPoint(16, dimension), readOnly(reasons::measurementWouldFollow), Choices::None, 1105,  L"A point of the dimension line."},
  {   5, L"Measurement",        L"Measurement",      types::angle, Category::PrimaryUnits,    computed<getMeasurement>(), readOnly(reasons::followsFromPoints),      Choices::None, 1056,  L"What is measured."},
  { 106, L"Normal",             L"Normal",           VT_VARIANT,   Category::Visualization3D, computedPoint<getNormal>(), readOnly(reasons::measurementWouldFollow), Choices::None, 1106,  L"Upright on the dimension's plane."},
};
// clang-format on

constexpr const std::span<const PropertyRow>* families[] = {
    &dimensionRows, &arrowRows, &twoArrowRows, &dimensionLineRows, &extensionLineRows, &angleUnitRows};

}  // namespace
}  // namespace angularDimensions

constinit const AutomationClass classes::VeltDimAngular = {
    .clsid = CLSID_VeltDimAngular,
    .name = L"VeltDimAngular",
    .label = L"Angular Dimension",
    .dxfName = "DIMENSION",
    .standsFor = isDimension<2>,
    .help = L"The angle between two lines.",
    .general = &entityRows,
    .families = angularDimensions::families,
    .rows = angularDimensions::rows,
};

}  // namespace velt::automation
