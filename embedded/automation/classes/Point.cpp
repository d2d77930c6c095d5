#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace points {
namespace {

using platform::Category;

constexpr const char* point = "AcDbPoint";

// clang-format off
constexpr PropertyRow rows[] = {
  // id name            label         type             category                   access                                writability                              choices        weight help
  {  1, L"Thickness",   L"Thickness", types::distance, Category::General,         storedReal(39, point).keepingShape(), writable,                                Choices::None,  90,   L"How far the point is pulled along its normal."},
  {  2, L"Coordinates", L"Position",  VT_VARIANT,      Category::Geometry,        worldPoint(10, point),                writable,                                Choices::None, 110,   L"Where the point is."},
  {  3, L"Normal",      L"Normal",    VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),           readOnly(reasons::thicknessBelongsToIt), Choices::None, 120,   L"Direction of the thickness."},
};
// clang-format on

}  // namespace
}  // namespace points

constinit const AutomationClass classes::VeltPoint = {
    .clsid = CLSID_VeltPoint,
    .name = L"VeltPoint",
    .label = L"Point",
    .dxfName = "POINT",
    .help = L"A single point.",
    .general = &entityRows,
    .rows = points::rows,
};

}  // namespace velt::automation
