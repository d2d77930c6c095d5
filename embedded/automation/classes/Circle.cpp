#include <cmath>
#include <numbers>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace circles {
namespace {

using platform::Category;

constexpr const char* circle = "AcDbCircle";

double radiusOf(const Subject& subject) {
  return subject.lens().real(40, circle, 0);
}

void putRadius(const Subject& subject, double radius) {
  requireWithin(Limit::Positive, radius);  // a number too small for the drawing may have become 0 on the way
  Editor(subject).real(40, circle, radius);
}

double getDiameter(const Subject& subject) {
  return 2 * radiusOf(subject);
}

void putDiameter(const Subject& subject, const double& diameter) {
  putRadius(subject, diameter / 2);
}

double getCircumference(const Subject& subject) {
  return fullTurn * radiusOf(subject);
}

void putCircumference(const Subject& subject, const double& circumference) {
  putRadius(subject, circumference / fullTurn);
}

double getArea(const Subject& subject) {
  const double radius = radiusOf(subject);
  return std::numbers::pi * radius * radius;
}

void putArea(const Subject& subject, const double& area) {
  requireWithin(Limit::Positive, area);
  putRadius(subject, std::sqrt(area / std::numbers::pi));
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name              label             type             category                   access                                                     writability                           choices        weight help
  {  1, L"Thickness",     L"Thickness",     types::distance, Category::General,         storedReal(39, circle).keepingShape(),                     writable,                             Choices::None,  90,   L"How far the circle is pulled along its normal."},
  {  2, L"Center",        L"Center",        VT_VARIANT,      Category::Geometry,        objectPoint(10, circle),                                   writable,                             Choices::None, 110,   L"Center of the circle."},
  {  3, L"Radius",        L"Radius",        types::distance, Category::Geometry,        storedReal(40, circle).positive(),                         writable,                             Choices::None, 120,   L"Radius of the circle."},
  {  4, L"Diameter",      L"Diameter",      types::distance, Category::Geometry,        computed<getDiameter, putDiameter>().positive(),           writable,                             Choices::None, 130,   L"Diameter of the circle; the radius follows it."},
  {  5, L"Circumference", L"Circumference", types::distance, Category::Geometry,        computed<getCircumference, putCircumference>().positive(), writable,                             Choices::None, 140,   L"Length of the circle; the radius follows it."},
  {  6, L"Area",          L"Area",          VT_R8,           Category::Geometry,        computed<getArea, putArea>().positive(),                   writable,                             Choices::None, 150,   L"Area that the circle encloses; the radius follows it."},
  {  7, L"Normal",        L"Normal",        VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),                                readOnly(reasons::centerWouldFollow), Choices::None, 160,   L"Upright on the circle's plane."},
};
// clang-format on

}  // namespace
}  // namespace circles

constinit const AutomationClass classes::VeltCircle = {
    .clsid = CLSID_VeltCircle,
    .name = L"VeltCircle",
    .label = L"Circle",
    .dxfName = "CIRCLE",
    .help = L"A full circle.",
    .general = &entityRows,
    .rows = circles::rows,
};

}  // namespace velt::automation
