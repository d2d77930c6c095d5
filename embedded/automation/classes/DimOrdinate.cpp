#include <cmath>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/DimensionGeometry.h"
#include "embedded/automation/dimensions/DimensionRows.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
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

#define DRAWN L" Read-only: what the dimension measures and how it looks would have to follow."

// clang-format off
constexpr PropertyRow rows[] = {
  // id   name               label           type             category                   access                                   choices        weight help
  { 101, L"Origin",         L"Origin",      VT_VARIANT,      Category::Geometry,        dimensionPoint(10),                      Choices::None, 1101,  L"Where the axes meet." DRAWN},
  { 102, L"FeaturePoint",   L"Feature",     VT_VARIANT,      Category::Geometry,        dimensionPoint(13),                      Choices::None, 1102,  L"Point that is measured." DRAWN},
  { 103, L"LeaderEndPoint", L"Leader end",  VT_VARIANT,      Category::Geometry,        dimensionPoint(14),                      Choices::None, 1103,  L"Where the leader ends." DRAWN},
  { 104, L"AlongX",         L"Along X",     VT_BOOL,         Category::Geometry,        storedBit(70, dimension, 64).readOnly(), Choices::None, 1104,  L"Whether the distance along the X axis is measured, not the one along the Y axis." DRAWN},
  { 5,   L"Measurement",    L"Measurement", types::distance, Category::PrimaryUnits,    computed<getMeasurement>(),              Choices::None, 1056,  L"What is measured, times the linear scale. Read-only: it follows from the points."},
  { 105, L"Normal",         L"Normal",      VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),              Choices::None, 1105,  L"Upright on the dimension's plane." DRAWN},
};
// clang-format on

#undef DRAWN

constexpr const std::span<const PropertyRow>* families[] = {&dimensionRows, &lengthUnitRows, &alternateRows};

}  // namespace

constinit const AutomationClass classes::VeltDimOrdinate = {
    CLSID_VeltDimOrdinate,
    L"VeltDimOrdinate",
    L"Ordinate Dimension",
    "DIMENSION",
    L"How far a point is from an origin, along one axis.",
    &entityRows,
    rows,
    nullptr,
    families,
    isDimension<6>,
};

}  // namespace velt::automation
