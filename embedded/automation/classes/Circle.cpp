#include <numbers>

#include "embedded/automation/Access.h"
#include "embedded/automation/ClassList.h"
#include "embedded/automation/HostIds.h"
#include "embedded/automation/classes/General.h"
#include "embedded/automation/geometry/Angle.h"

namespace velt::automation {
namespace {

using palette::Category;

constexpr const char* circle = "AcDbCircle";

double radiusOf(const Subject& subject) {
  return subject.lens().real(40, circle, 0);
}

double getDiameter(const Subject& subject) {
  return 2 * radiusOf(subject);
}

double getCircumference(const Subject& subject) {
  return fullTurn * radiusOf(subject);
}

double getArea(const Subject& subject) {
  const double radius = radiusOf(subject);
  return std::numbers::pi * radius * radius;
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id  name             label            type             category                   access                         choices       weight  help
  {  1, L"Thickness",     L"Thickness",    types::distance, Category::General,         storedReal(39, circle),        Choices::None,  90, L"How far the circle is pulled along its normal."},
  {  2, L"Center",        L"Center",       VT_VARIANT,      Category::Geometry,        objectPoint(10, circle),       Choices::None, 110, L"Center of the circle."},
  {  3, L"Radius",        L"Radius",       types::distance, Category::Geometry,        storedReal(40, circle),        Choices::None, 120, L"Radius of the circle."},
  {  4, L"Diameter",      L"Diameter",     types::distance, Category::Geometry,        computed<getDiameter>(),       Choices::None, 130, L"Diameter of the circle."},
  {  5, L"Circumference", L"Circumference", types::distance, Category::Geometry,       computed<getCircumference>(),  Choices::None, 140, L"Length of the circle."},
  {  6, L"Area",          L"Area",         types::area,     Category::Geometry,        computed<getArea>(),           Choices::None, 150, L"Area that the circle encloses."},
  {  7, L"Normal",        L"Normal",       VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),    Choices::None, 160, L"Upright on the circle's plane. Read-only: the center would have to follow it."},
};
// clang-format on

}  // namespace

constinit const AutomationClass circleClass = {
    CLSID_VeltCircle, L"VeltCircle", L"Circle", "CIRCLE", L"A full circle.", &entityRows, rows,
};

}  // namespace velt::automation
