#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/DimensionGeometry.h"
#include "embedded/automation/dimensions/DimensionRows.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace radialDimensions {
namespace {

using platform::Category;

double getMeasurement(const Subject& subject) {
  return scaledLength(subject, length(dimensionPointOf(subject, 15) - dimensionPointOf(subject, 10)));
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name             label             type             category                   access                      writability                                choices        weight help
  { 101, L"Center",       L"Center",        VT_VARIANT,      Category::Geometry,        dimensionPoint(10),         readOnly(reasons::measurementWouldFollow), Choices::None, 1101,  L"Center of what is measured."},
  { 102, L"ChordPoint",   L"Chord point",   VT_VARIANT,      Category::Geometry,        dimensionPoint(15),         readOnly(reasons::measurementWouldFollow), Choices::None, 1102,  L"Where the dimension line meets the curve."},
  { 103, L"LeaderLength", L"Leader length", types::distance, Category::Geometry,        storedReal(40, dimension),  readOnly(reasons::measurementWouldFollow), Choices::None, 1103,  L"How far the dimension line runs on outside of the curve."},
  {   5, L"Measurement",  L"Measurement",   types::distance, Category::PrimaryUnits,    computed<getMeasurement>(), readOnly(reasons::followsFromPoints),      Choices::None, 1056,  L"What is measured, times the linear scale."},
  { 104, L"Normal",       L"Normal",        VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(), readOnly(reasons::measurementWouldFollow), Choices::None, 1104,  L"Upright on the dimension's plane."},
};
// clang-format on

constexpr const std::span<const PropertyRow>* families[] = {&dimensionRows,  &arrowRows,      &oneArrowRows,
                                                            &centerMarkRows, &lengthUnitRows, &alternateRows};

}  // namespace
}  // namespace radialDimensions

constinit const AutomationClass classes::VeltDimRadial = {
    .clsid = CLSID_VeltDimRadial,
    .name = L"VeltDimRadial",
    .label = L"Radial Dimension",
    .dxfName = "DIMENSION",
    .standsFor = isDimension<4>,
    .help = L"The radius of a circle or an arc.",
    .general = &entityRows,
    .families = radialDimensions::families,
    .rows = radialDimensions::rows,
};

}  // namespace velt::automation
