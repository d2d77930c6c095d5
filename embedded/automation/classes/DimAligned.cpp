#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/DimensionGeometry.h"
#include "embedded/automation/dimensions/DimensionRows.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace alignedDimensions {
namespace {

using platform::Category;

double getMeasurement(const Subject& subject) {
  return scaledLength(subject, length(inDimensionPlane(
                                   subject, dimensionPointOf(subject, 14) - dimensionPointOf(subject, 13))));
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name              label           type             category                   access                          writability                                choices        weight help
  { 101, L"ExtLine1Point", L"Ext line 1",  VT_VARIANT,      Category::Geometry,        dimensionPoint(13),             readOnly(reasons::measurementWouldFollow), Choices::None, 1101,  L"First point that is measured."},
  { 102, L"ExtLine2Point", L"Ext line 2",  VT_VARIANT,      Category::Geometry,        dimensionPoint(14),             readOnly(reasons::measurementWouldFollow), Choices::None, 1102,  L"Second point that is measured."},
  { 103, L"DimLinePoint",  L"Dim line",    VT_VARIANT,      Category::Geometry,        dimensionPoint(10),             readOnly(reasons::measurementWouldFollow), Choices::None, 1103,  L"A point of the dimension line."},
  { 104, L"ObliqueAngle",  L"Oblique",     types::angle,    Category::Geometry,        storedDirection(52, dimension), readOnly(reasons::measurementWouldFollow), Choices::None, 1104,  L"Direction of the extension lines; 0 where they stand upright on the dimension line."},
  {   5, L"Measurement",   L"Measurement", types::distance, Category::PrimaryUnits,    computed<getMeasurement>(),     readOnly(reasons::followsFromPoints),      Choices::None, 1056,  L"What is measured, times the linear scale."},
  { 105, L"Normal",        L"Normal",      VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),     readOnly(reasons::measurementWouldFollow), Choices::None, 1105,  L"Upright on the dimension's plane."},
};
// clang-format on

constexpr const std::span<const PropertyRow>* families[] = {
    &dimensionRows,     &arrowRows,      &twoArrowRows, &dimensionLineRows,
    &extensionLineRows, &lengthUnitRows, &alternateRows};

}  // namespace
}  // namespace alignedDimensions

constinit const AutomationClass classes::VeltDimAligned = {
    .clsid = CLSID_VeltDimAligned,
    .name = L"VeltDimAligned",
    .label = L"Aligned Dimension",
    .dxfName = "DIMENSION",
    .standsFor = isDimension<1>,
    .help = L"The distance of two points.",
    .general = &entityRows,
    .families = alignedDimensions::families,
    .rows = alignedDimensions::rows,
};

}  // namespace velt::automation
