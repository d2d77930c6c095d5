#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/DimensionGeometry.h"
#include "embedded/automation/dimensions/DimensionRows.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace {

using platform::Category;

double getMeasurement(const Subject& subject) {
  return scaledLength(subject, length(dimensionPointOf(subject, 15) - dimensionPointOf(subject, 10)));
}

#define DRAWN L" Read-only: what the dimension measures and how it looks would have to follow."

// clang-format off
constexpr PropertyRow rows[] = {
  // id   name              label               type             category                   access                                choices        weight help
  { 101, L"ChordPoint",    L"Chord point",     VT_VARIANT,      Category::Geometry,        dimensionPoint(15),                   Choices::None, 1101,  L"Where the dimension line meets the curve." DRAWN},
  { 102, L"FarChordPoint", L"Far chord point", VT_VARIANT,      Category::Geometry,        dimensionPoint(10),                   Choices::None, 1102,  L"Where it meets the curve on the other side." DRAWN},
  { 103, L"LeaderLength",  L"Leader length",   types::distance, Category::Geometry,        storedReal(40, dimension).readOnly(), Choices::None, 1103,  L"How far the dimension line runs on outside of the curve." DRAWN},
  { 5,   L"Measurement",   L"Measurement",     types::distance, Category::PrimaryUnits,    computed<getMeasurement>(),           Choices::None, 1056,  L"What is measured, times the linear scale. Read-only: it follows from the points."},
  { 104, L"Normal",        L"Normal",          VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),           Choices::None, 1104,  L"Upright on the dimension's plane." DRAWN},
};
// clang-format on

#undef DRAWN

constexpr const std::span<const PropertyRow>* families[] = {
    &dimensionRows,  &arrowRows,      &twoArrowRows, &dimensionLineRows,
    &centerMarkRows, &lengthUnitRows, &alternateRows};

}  // namespace

constinit const AutomationClass classes::VeltDimDiametric = {
    CLSID_VeltDimDiametric,
    L"VeltDimDiametric",
    L"Diametric Dimension",
    "DIMENSION",
    L"The diameter of a circle or an arc.",
    &entityRows,
    rows,
    nullptr,
    families,
    isDimension<3>,
};

}  // namespace velt::automation
