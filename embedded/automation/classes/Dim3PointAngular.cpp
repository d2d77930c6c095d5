#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/DimensionGeometry.h"
#include "embedded/automation/dimensions/DimensionRows.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace threePointAngularDimensions {
namespace {

using platform::Category;

double getMeasurement(const Subject& subject) {
  return angleAround(subject, dimensionPointOf(subject, 15), dimensionPointOf(subject, 13),
                     dimensionPointOf(subject, 14), dimensionPointOf(subject, 10));
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name              label           type          category                   access                      writability                                choices        weight help
  { 101, L"AngleVertex",   L"Vertex",      VT_VARIANT,   Category::Geometry,        dimensionPoint(15),         readOnly(reasons::measurementWouldFollow), Choices::None, 1101,  L"Where the two directions part."},
  { 102, L"ExtLine1Point", L"Ext line 1",  VT_VARIANT,   Category::Geometry,        dimensionPoint(13),         readOnly(reasons::measurementWouldFollow), Choices::None, 1102,  L"A point of the first direction."},
  { 103, L"ExtLine2Point", L"Ext line 2",  VT_VARIANT,   Category::Geometry,        dimensionPoint(14),         readOnly(reasons::measurementWouldFollow), Choices::None, 1103,  L"A point of the second direction."},
  { 104, L"DimArcPoint",   L"Dim arc",     VT_VARIANT,   Category::Geometry,        dimensionPoint(10),         readOnly(reasons::measurementWouldFollow), Choices::None, 1104,  L"A point of the dimension line."},
  {   5, L"Measurement",   L"Measurement", types::angle, Category::PrimaryUnits,    computed<getMeasurement>(), readOnly(reasons::followsFromPoints),      Choices::None, 1056,  L"What is measured."},
  { 105, L"Normal",        L"Normal",      VT_VARIANT,   Category::Visualization3D, computedPoint<getNormal>(), readOnly(reasons::measurementWouldFollow), Choices::None, 1105,  L"Upright on the dimension's plane."},
};
// clang-format on

constexpr const std::span<const PropertyRow>* families[] = {
    &dimensionRows, &arrowRows, &twoArrowRows, &dimensionLineRows, &extensionLineRows, &angleUnitRows};

}  // namespace
}  // namespace threePointAngularDimensions

constinit const AutomationClass classes::VeltDim3PointAngular = {
    .clsid = CLSID_VeltDim3PointAngular,
    .name = L"VeltDim3PointAngular",
    .label = L"3-Point Angular Dimension",
    .dxfName = "DIMENSION",
    .standsFor = isDimension<5>,
    .help = L"The angle between two directions.",
    .general = &entityRows,
    .families = threePointAngularDimensions::families,
    .rows = threePointAngularDimensions::rows,
};

}  // namespace velt::automation
