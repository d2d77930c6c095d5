#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/DimensionGeometry.h"
#include "embedded/automation/dimensions/DimensionPicture.h"
#include "embedded/automation/dimensions/DimensionRows.h"
#include "embedded/automation/dimensions/DimensionTypes.h"
#include "embedded/automation/dimensions/StyleAccess.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace arcLengthDimensions {
namespace {

using platform::Category;

// From one end to the other, along the side that the dimension line is on.
double getMeasurement(const Subject& subject) {
  const Vector3 center = dimensionPointOf(subject, 15);
  const Vector3 first = dimensionPointOf(subject, 13);
  return scaledLength(subject, length(first - center)
                                   * angleAround(subject, center, first, dimensionPointOf(subject, 14),
                                                 dimensionPointOf(subject, 10)));
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name              label                 type              category                   access                             writability                                choices               weight help
  { 101, L"AngleVertex",   L"Center",            VT_VARIANT,       Category::Geometry,        dimensionPoint(15),                readOnly(reasons::measurementWouldFollow), Choices::None,        1101,  L"Center of the arc."},
  { 102, L"ExtLine1Point", L"Ext line 1",        VT_VARIANT,       Category::Geometry,        dimensionPoint(13),                readOnly(reasons::measurementWouldFollow), Choices::None,        1102,  L"Where the measured part of the arc begins."},
  { 103, L"ExtLine2Point", L"Ext line 2",        VT_VARIANT,       Category::Geometry,        dimensionPoint(14),                readOnly(reasons::measurementWouldFollow), Choices::None,        1103,  L"Where it ends."},
  { 104, L"DimArcPoint",   L"Dim arc",           VT_VARIANT,       Category::Geometry,        dimensionPoint(10),                readOnly(reasons::measurementWouldFollow), Choices::None,        1104,  L"A point of the dimension line."},
  {   6, L"Symbol",        L"Arc length symbol", types::arcSymbol, Category::Text,            styleMember(variables::arcSymbol), readOnlyWhere(drawnInPicture),             Choices::Enumeration, 1055,  L"Where the symbol of an arc stands."},
  {   5, L"Measurement",   L"Measurement",       types::distance,  Category::PrimaryUnits,    computed<getMeasurement>(),        readOnly(reasons::followsFromPoints),      Choices::None,        1056,  L"What is measured, times the linear scale."},
  { 106, L"Normal",        L"Normal",            VT_VARIANT,       Category::Visualization3D, computedPoint<getNormal>(),        readOnly(reasons::measurementWouldFollow), Choices::None,        1106,  L"Upright on the dimension's plane."},
};
// clang-format on

constexpr const std::span<const PropertyRow>* families[] = {
    &dimensionRows,     &arrowRows,      &twoArrowRows, &dimensionLineRows,
    &extensionLineRows, &lengthUnitRows, &alternateRows};

}  // namespace
}  // namespace arcLengthDimensions

constinit const AutomationClass classes::VeltDimArcLength = {
    .clsid = CLSID_VeltDimArcLength,
    .name = L"VeltDimArcLength",
    .label = L"Arc Length Dimension",
    .dxfName = "ARC_DIMENSION",
    .help = L"The length along an arc.",
    .general = &entityRows,
    .families = arcLengthDimensions::families,
    .rows = arcLengthDimensions::rows,
};

}  // namespace velt::automation
