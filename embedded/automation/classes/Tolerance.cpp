#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/dimensions/StyleAccess.h"
#include "embedded/automation/dimensions/StyleName.h"
#include "embedded/automation/dimensions/StyleText.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace tolerances {
namespace {

using platform::Category;

constexpr const char* frame = "AcDbFcf";

Vector3 getDirectionVector(const Subject& subject) {
  return direction(pointAt(subject.lens(), 11, frame, {1, 0, 0}), {1, 0, 0});
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id   name                   label                 type             category                   access                                                                                     writability                                      choices              weight help
  {   81, L"TextString",         L"Contents",          VT_BSTR,         Category::Text,            storedText(1, frame),                                                                      writable,                                        Choices::None,       110,   L"The tolerances, with the codes of their symbols."},
  { 1542, L"DimStyle",           L"Dim style",         VT_BSTR,         Category::Misc,            computed<getDimStyle, putDimStyle>(),                                                      writable,                                        Choices::DimStyles,  120,   L"Name of the dimension style."},
  { 1553, L"ScaleFactor",        L"Dim scale overall", types::noUnits,  Category::Misc,            styleReal(variables::overallScale).notNegative(),                                          writable,                                        Choices::None,       130,   L"Scale of all sizes of the frame."},
  {   13, L"DimensionLineColor", L"Dim line color",    types::color,    Category::LinesAndArrows,  styleColor(variables::dimensionLineColor).keepingShape(),                                  writable,                                        Choices::Colors,     140,   L"Color of the frame."},
  { 1546, L"TextColor",          L"Text color",        types::color,    Category::Text,            styleColor(variables::textColor).keepingShape(),                                           writable,                                        Choices::Colors,     150,   L"Color of the text."},
  { 1563, L"TextStyle",          L"Text style",        VT_BSTR,         Category::Text,            computed<getDimensionTextStyle, putDimensionTextStyle>().from(variables::textStyle.since), writable,                                        Choices::TextStyles, 160,   L"Name of the text style."},
  { 1549, L"TextGap",            L"Text offset",       types::distance, Category::Text,            computed<getTextGap, putTextGap>().notNegative(),                                          writable,                                        Choices::None,       170,   L"Room around the text."},
  { 1562, L"TextHeight",         L"Text height",       types::distance, Category::Text,            styleReal(variables::textHeight).positive(),                                               writable,                                        Choices::None,       180,   L"Height of the text, before the overall scale."},
  { 1541, L"DirectionVector",    L"Direction vector",  VT_VARIANT,      Category::Geometry,        computedPoint<getDirectionVector>(),                                                       readOnly(reasons::coordinatesDependOnEachOther), Choices::None,       190,   L"Direction of the frame."},
  {  101, L"InsertionPoint",     L"Position",          VT_VARIANT,      Category::Geometry,        worldPoint(10, frame),                                                                     writable,                                        Choices::None,       200,   L"Where the frame is."},
  {  102, L"Normal",             L"Normal",            VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),                                                                readOnly(reasons::directionWouldFollow),         Choices::None,       210,   L"Upright on the plane of the frame."},
};
// clang-format on

}  // namespace
}  // namespace tolerances

constinit const AutomationClass classes::VeltTolerance = {
    .clsid = CLSID_VeltTolerance,
    .name = L"VeltTolerance",
    .label = L"Tolerance",
    .dxfName = "TOLERANCE",
    .help = L"A frame with geometric tolerances.",
    .general = &entityRows,
    .rows = tolerances::rows,
};

}  // namespace velt::automation
