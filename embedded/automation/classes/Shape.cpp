#include <string>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace shapes {
namespace {

using platform::Category;

constexpr const char* shape = "AcDbShape";

std::wstring getName(const Subject& subject) {
  return subject.lens().name(2, shape);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name               label            type             category                   access                               writability                                        choices        weight help
  {  1, L"Thickness",      L"Thickness",    types::distance, Category::General,         storedReal(39, shape),               writable,                                          Choices::None,  90,   L"How far the shape is pulled along its normal."},
  {  2, L"Name",           L"Name",         VT_BSTR,         Category::Misc,            computed<getName>(),                 readOnly(reasons::fileOutsideOfDrawing),           Choices::None, 110,   L"Name of the sign in its file."},
  {  3, L"Size",           L"Size",         types::distance, Category::Misc,            storedReal(40, shape, 1).positive(), writable,                                          Choices::None, 120,   L"Size of the sign."},
  {  4, L"Rotation",       L"Rotation",     types::angle,    Category::Misc,            storedDirection(50, shape),          writable,                                          Choices::None, 130,   L"Direction of the sign in its plane."},
  {  5, L"ScaleFactor",    L"Width factor", types::noUnits,  Category::Misc,            storedReal(41, shape, 1).notZero(),  writable,                                          Choices::None, 140,   L"How much wider than usual the sign is."},
  {  6, L"ObliqueAngle",   L"Obliquing",    types::angle,    Category::Misc,            storedDegrees(51, shape),            readOnly(reasons::ownRulesOfDrawing),              Choices::None, 150,   L"How far the sign leans to the right."},
  {  7, L"InsertionPoint", L"Position",     VT_VARIANT,      Category::Geometry,        objectPoint(10, shape),              writable,                                          Choices::None, 160,   L"Where the sign is."},
  {  8, L"Normal",         L"Normal",       VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),          readOnly(reasons::positionAndRotationWouldFollow), Choices::None, 170,   L"Upright on the plane of the shape."},
};
// clang-format on

}  // namespace
}  // namespace shapes

constinit const AutomationClass classes::VeltShape = {
    .clsid = CLSID_VeltShape,
    .name = L"VeltShape",
    .label = L"Shape",
    .dxfName = "SHAPE",
    .help = L"A sign of a shape file.",
    .general = &entityRows,
    .rows = shapes::rows,
};

}  // namespace velt::automation
