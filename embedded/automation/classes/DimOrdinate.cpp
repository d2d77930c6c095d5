#include <cmath>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/DimensionGeometry.h"
#include "embedded/automation/dimensions/DimensionRows.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace ordinateDimensions {
namespace {

using platform::Category;

constexpr std::int64_t alongX = 64;

// The axes may be turned in the plane; the stored angle leads back.
double getMeasurement(const Subject& subject) {
  const database::Lens lens = subject.lens();
  const Vector3 arm =
      inDimensionPlane(subject, dimensionPointOf(subject, 13) - dimensionPointOf(subject, 10));
  const double turn = -radians(lens.real(51, dimension, 0));
  const bool isX = (lens.integer(70, dimension, 0) & alongX) != 0;
  return scaledLength(subject, std::abs(isX ? arm.x * std::cos(turn) + arm.y * std::sin(turn)
                                            : arm.y * std::cos(turn) - arm.x * std::sin(turn)));
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name               label           type             category                   access                        writability                                choices        weight help
  { 101, L"Origin",         L"Origin",      VT_VARIANT,      Category::Geometry,        dimensionPoint(10),           readOnly(reasons::measurementWouldFollow), Choices::None, 1101,  L"Where the axes meet."},
  { 102, L"FeaturePoint",   L"Feature",     VT_VARIANT,      Category::Geometry,        dimensionPoint(13),           readOnly(reasons::measurementWouldFollow), Choices::None, 1102,  L"Point that is measured."},
  { 103, L"LeaderEndPoint", L"Leader end",  VT_VARIANT,      Category::Geometry,        dimensionPoint(14),           readOnly(reasons::measurementWouldFollow), Choices::None, 1103,  L"Where the leader ends."},
  { 104, L"AlongX",         L"Along X",     VT_BOOL,         Category::Geometry,        storedBit(70, dimension, 64), readOnly(reasons::measurementWouldFollow), Choices::None, 1104,  L"Whether the distance along the X axis is measured, not the one along the Y axis."},
  {   5, L"Measurement",    L"Measurement", types::distance, Category::PrimaryUnits,    computed<getMeasurement>(),   readOnly(reasons::followsFromPoints),      Choices::None, 1056,  L"What is measured, times the linear scale."},
  { 105, L"Normal",         L"Normal",      VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),   readOnly(reasons::measurementWouldFollow), Choices::None, 1105,  L"Upright on the dimension's plane."},
};
// clang-format on

constexpr const std::span<const PropertyRow>* families[] = {&dimensionRows, &lengthUnitRows, &alternateRows};

}  // namespace
}  // namespace ordinateDimensions

constinit const AutomationClass classes::VeltDimOrdinate = {
    .clsid = CLSID_VeltDimOrdinate,
    .name = L"VeltDimOrdinate",
    .label = L"Ordinate Dimension",
    .dxfName = "DIMENSION",
    .standsFor = isDimension<6>,
    .help = L"How far a point is from an origin, along one axis.",
    .general = &entityRows,
    .families = ordinateDimensions::families,
    .rows = ordinateDimensions::rows,
};

}  // namespace velt::automation
