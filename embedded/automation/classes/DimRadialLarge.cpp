#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/DimensionGeometry.h"
#include "embedded/automation/dimensions/DimensionPicture.h"
#include "embedded/automation/dimensions/DimensionRows.h"
#include "embedded/automation/dimensions/StyleAccess.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace largeRadialDimensions {
namespace {

using platform::Category;

double getMeasurement(const Subject& subject) {
  return scaledLength(subject, length(dimensionPointOf(subject, 15) - dimensionPointOf(subject, 10)));
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name               label            type             category                   access                                     writability                                choices        weight help
  { 101, L"Center",         L"Center",       VT_VARIANT,      Category::Geometry,        dimensionPoint(10),                        readOnly(reasons::measurementWouldFollow), Choices::None, 1101,  L"Center of what is measured."},
  { 102, L"ChordPoint",     L"Chord point",  VT_VARIANT,      Category::Geometry,        dimensionPoint(15),                        readOnly(reasons::measurementWouldFollow), Choices::None, 1102,  L"Where the dimension line meets the curve."},
  { 103, L"OverrideCenter", L"Center shown", VT_VARIANT,      Category::Geometry,        dimensionPoint(13),                        readOnly(reasons::measurementWouldFollow), Choices::None, 1103,  L"Where the dimension line begins in place of the center."},
  { 104, L"JogPoint",       L"Jog",          VT_VARIANT,      Category::Geometry,        dimensionPoint(14),                        readOnly(reasons::measurementWouldFollow), Choices::None, 1104,  L"Middle of the jog."},
  { 105, L"JogAngle",       L"Jog angle",    types::angle,    Category::Geometry,        styleReal(variables::jogAngle).positive(), readOnlyWhere(drawnInPicture),             Choices::None, 1105,  L"Angle of the jog."},
  {   5, L"Measurement",    L"Measurement",  types::distance, Category::PrimaryUnits,    computed<getMeasurement>(),                readOnly(reasons::followsFromPoints),      Choices::None, 1056,  L"What is measured, times the linear scale."},
  { 106, L"Normal",         L"Normal",       VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),                readOnly(reasons::measurementWouldFollow), Choices::None, 1106,  L"Upright on the dimension's plane."},
};
// clang-format on

constexpr const std::span<const PropertyRow>* families[] = {&dimensionRows,  &arrowRows,      &oneArrowRows,
                                                            &centerMarkRows, &lengthUnitRows, &alternateRows};

}  // namespace
}  // namespace largeRadialDimensions

constinit const AutomationClass classes::VeltDimRadialLarge = {
    .clsid = CLSID_VeltDimRadialLarge,
    .name = L"VeltDimRadialLarge",
    .label = L"Jogged Radial Dimension",
    .dxfName = "LARGE_RADIAL_DIMENSION",
    .help = L"The radius of a curve whose center is far away.",
    .general = &entityRows,
    .families = largeRadialDimensions::families,
    .rows = largeRadialDimensions::rows,
};

}  // namespace velt::automation
