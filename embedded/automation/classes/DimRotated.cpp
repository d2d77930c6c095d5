#include <cmath>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/DimensionGeometry.h"
#include "embedded/automation/dimensions/DimensionRows.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace rotatedDimensions {
namespace {

using platform::Category;

// Along the direction of the dimension line, which lies in the plane.
double getMeasurement(const Subject& subject) {
  const Vector3 between =
      inDimensionPlane(subject, dimensionPointOf(subject, 14) - dimensionPointOf(subject, 13));
  const double along = radians(subject.lens().real(50, dimension, 0));
  return scaledLength(subject, std::abs(between.x * std::cos(along) + between.y * std::sin(along)));
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name              label           type             category                   access                          writability                                choices        weight help
  { 101, L"ExtLine1Point", L"Ext line 1",  VT_VARIANT,      Category::Geometry,        dimensionPoint(13),             readOnly(reasons::measurementWouldFollow), Choices::None, 1101,  L"First point that is measured."},
  { 102, L"ExtLine2Point", L"Ext line 2",  VT_VARIANT,      Category::Geometry,        dimensionPoint(14),             readOnly(reasons::measurementWouldFollow), Choices::None, 1102,  L"Second point that is measured."},
  { 103, L"DimLinePoint",  L"Dim line",    VT_VARIANT,      Category::Geometry,        dimensionPoint(10),             readOnly(reasons::measurementWouldFollow), Choices::None, 1103,  L"A point of the dimension line."},
  { 104, L"Rotation",      L"Rotation",    types::angle,    Category::Geometry,        storedDirection(50, dimension), readOnly(reasons::measurementWouldFollow), Choices::None, 1104,  L"Direction of the dimension line."},
  { 105, L"ObliqueAngle",  L"Oblique",     types::angle,    Category::Geometry,        storedDirection(52, dimension), readOnly(reasons::measurementWouldFollow), Choices::None, 1105,  L"Direction of the extension lines; 0 where they stand upright on the dimension line."},
  {   5, L"Measurement",   L"Measurement", types::distance, Category::PrimaryUnits,    computed<getMeasurement>(),     readOnly(reasons::followsFromPoints),      Choices::None, 1056,  L"What is measured, times the linear scale."},
  { 106, L"Normal",        L"Normal",      VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),     readOnly(reasons::measurementWouldFollow), Choices::None, 1106,  L"Upright on the dimension's plane."},
};
// clang-format on

constexpr const std::span<const PropertyRow>* families[] = {
    &dimensionRows,     &arrowRows,      &twoArrowRows, &dimensionLineRows,
    &extensionLineRows, &lengthUnitRows, &alternateRows};

}  // namespace
}  // namespace rotatedDimensions

constinit const AutomationClass classes::VeltDimRotated = {
    .clsid = CLSID_VeltDimRotated,
    .name = L"VeltDimRotated",
    .label = L"Rotated Dimension",
    .dxfName = "DIMENSION",
    .standsFor = isDimension<0>,
    .help = L"A distance along a given direction.",
    .general = &entityRows,
    .families = rotatedDimensions::families,
    .rows = rotatedDimensions::rows,
};

}  // namespace velt::automation
