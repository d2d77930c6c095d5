#include <cstdint>
#include <optional>
#include <string>

#include "dxf/Numbers.h"
#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/Entity.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace viewports {
namespace {

using platform::Category;

// clang-format off
constexpr EnumMember viewRenderingMembers[] = {
  // value  name               label
  { 0,      L"Optimized2D",    L"2D optimized"},
  { 1,      L"Wireframe",      L"Wireframe"},
  { 2,      L"HiddenLine",     L"Hidden lines"},
  { 3,      L"FlatShaded",     L"Flat shaded"},
  { 4,      L"GouraudShaded",  L"Gouraud shaded"},
  { 5,      L"FlatShadedEdges", L"Flat shaded with edges"},
  { 6,      L"GouraudShadedEdges", L"Gouraud shaded with edges"},
};
constexpr UserType viewRendering = {L"VeltViewRendering", L"How a viewport shows its contents.", VT_I4, viewRenderingMembers};

constexpr EnumMember shadePlotMembers[] = {
  // value  name               label
  { 0,      L"AsDisplayed",    L"As displayed"},
  { 1,      L"Wireframe",      L"Wireframe"},
  { 2,      L"Hidden",         L"Hidden lines"},
  { 3,      L"Rendered",       L"Rendered"},
};
constexpr UserType shadePlot = {L"VeltShadePlot", L"How a viewport is plotted.", VT_I4, shadePlotMembers};
// clang-format on

constexpr const char* viewport = "AcDbViewport";
constexpr std::int64_t lockedFlag = 0x4000;
constexpr std::int64_t offFlag = 0x20000;

// Old drawings know the number of the window only, which is 0 or less for one that is off.
bool getOn(const Subject& subject) {
  const database::Lens lens = subject.lens();
  if (lens.has(90, viewport)) return (lens.integer(90, viewport, 0) & offFlag) == 0;
  return lens.integer(68, viewport, 1) > 0;
}

bool getClipped(const Subject& subject) {
  return subject.lens().handle(340, viewport) != 0;
}

// Old drawings keep it in extended data: the second number of a list.
double getViewHeight(const Subject& subject) {
  constexpr int numberCode = 1040;
  const database::Lens lens = subject.lens();
  if (lens.has(45, viewport)) return lens.real(45, viewport, 0);
  const std::optional<dxf::PairRange> range = lens.xdata("ACAD");
  if (!range) return 0;
  int numbers = 0;
  for (std::size_t index = range->first; index < range->first + range->count; ++index) {
    if (lens.view().code(index) == numberCode && ++numbers == 2)
      return dxf::parseReal(lens.view().value(index)).value_or(0);
  }
  return 0;
}

void putViewHeight(const Subject& subject, const double& height) {
  Editor(subject).real(45, viewport, height);
}

// Lengths on paper over lengths of the model.
double getCustomScale(const Subject& subject) {
  const double seen = getViewHeight(subject);
  if (!(seen > 0)) throw Refusal(E_FAIL, L"The drawing does not tell how much the viewport shows.");
  return subject.lens().real(41, viewport, 0) / seen;
}

void putCustomScale(const Subject& subject, const double& scale) {
  if (getCustomScale(subject) != scale) putViewHeight(subject, subject.lens().real(41, viewport, 0) / scale);
}

template <int Code, std::int64_t Otherwise>
std::int64_t storedOr(const Subject& subject) {
  return subject.lens().integer(Code, viewport, Otherwise);
}

std::int32_t getRenderMode(const Subject& subject) {
  return memberOr(viewRendering, storedOr<281, 0>(subject), 0);
}

std::int32_t getShadePlot(const Subject& subject) {
  return memberOr(shadePlot, storedOr<170, 0>(subject), 0);
}

std::wstring getPlotStyleTable(const Subject& subject) {
  return subject.lens().name(1, viewport);
}

const database::Layout* sheetOf(const Subject& subject) {
  const database::TableEntry* const owner = subject.entity().owner();
  return owner == nullptr ? nullptr : subject.drawing().layoutOf(*owner);
}

std::wstring getSheetPlotStyleTable(const Subject& subject) {
  const database::Layout* const sheet = sheetOf(subject);
  if (sheet == nullptr || sheet->record == dxf::none) return {};
  return database::Lens(subject.drawing(), sheet->record).name(7, "AcDbPlotSettings");
}

std::wstring getSheetName(const Subject& subject) {
  const database::Layout* const sheet = sheetOf(subject);
  return sheet == nullptr ? std::wstring() : sheet->name;
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                    label                             type                   category            access                                                                writability                                     choices               weight help
  {  1, L"On",                  L"On",                            VT_BOOL,               Category::Misc,     computed<getOn>(),                                                    readOnly(reasons::numbersWouldDiffer),          Choices::None,        110,   L"Whether the viewport shows anything."},
  {  2, L"Clipped",             L"Clipped",                       VT_BOOL,               Category::Misc,     computed<getClipped>(),                                               readOnly(reasons::entityWouldBeFound),          Choices::None,        120,   L"Whether another entity is its boundary."},
  {  3, L"DisplayLocked",       L"Display locked",                VT_BOOL,               Category::Misc,     storedBit(90, viewport, lockedFlag),                                  readOnly(reasons::protectsWhatIsRead),          Choices::None,        130,   L"Whether the view stays what it is."},
  {  4, L"CustomScale",         L"Custom scale",                  types::noUnits,        Category::Misc,     computed<getCustomScale, putCustomScale>().positive().from("AC1015"), writable,                                       Choices::None,        140,   L"How large the model is on paper."},
  {  5, L"UCSPerViewport",      L"UCS per viewport",              VT_BOOL,               Category::Misc,     storedBit(71, viewport, 1),                                           readOnly(reasons::theseWouldBeMade),            Choices::None,        150,   L"Whether the viewport has coordinate axes of its own."},
  {  6, L"RenderMode",          L"Visual style",                  viewRendering,         Category::Misc,     computed<getRenderMode>(),                                            readOnly(reasons::styleBesideIt),               Choices::Enumeration, 160,   L"How the contents are shown."},
  {  7, L"ShadePlot",           L"Shade plot",                    shadePlot,             Category::Misc,     computed<getShadePlot>(),                                             readOnly(reasons::styleBesideIt),               Choices::Enumeration, 170,   L"How the contents are plotted."},
  {  8, L"PlotStyleTable",      L"Plot style table",              VT_BSTR,               Category::Misc,     computed<getPlotStyleTable>(),                                        readOnly(reasons::tablesOutsideOfDrawing),      Choices::None,        180,   L"Table of plot styles of the viewport; empty for that of the sheet."},
  {  9, L"SheetPlotStyleTable", L"Plot style table of the sheet", types::plotStyleTable, Category::Misc,     computed<getSheetPlotStyleTable>(),                                   readOnly(reasons::belongsToSheet),              Choices::None,        190,   L"Table of plot styles of the whole sheet."},
  { 10, L"SheetName",           L"Sheet",                         VT_BSTR,               Category::Misc,     computed<getSheetName>(),                                             readOnly(reasons::belongsToSheet),              Choices::None,        200,   L"Name of the sheet that the viewport is on."},
  { 11, L"Center",              L"Center",                        VT_VARIANT,            Category::Geometry, worldPoint(10, viewport),                                             readOnly(reasons::clippingBoundaryWouldFollow), Choices::None,        210,   L"Center of the viewport on its sheet."},
  { 12, L"Height",              L"Height",                        types::distance,       Category::Geometry, storedReal(41, viewport),                                             readOnly(reasons::clippingBoundaryWouldFollow), Choices::None,        220,   L"Height on the sheet."},
  { 13, L"Width",               L"Width",                         types::distance,       Category::Geometry, storedReal(40, viewport),                                             readOnly(reasons::clippingBoundaryWouldFollow), Choices::None,        230,   L"Width on the sheet."},
  { 14, L"ViewHeight",          L"View height",                   types::distance,       Category::View,     computed<getViewHeight, putViewHeight>().positive().from("AC1015"),   writable,                                       Choices::None,        240,   L"How much of the model is seen from bottom to top."},
  { 15, L"Target",              L"Target",                        VT_VARIANT,            Category::View,     worldPoint(17, viewport).from("AC1015"),                              writable,                                       Choices::None,        250,   L"Point of the model that is looked at."},
  { 16, L"Direction",           L"Direction",                     VT_VARIANT,            Category::View,     worldPoint(16, viewport),                                             readOnly(reasons::viewCenterWouldFollow),       Choices::None,        260,   L"From the target to the eye."},
  { 17, L"TwistAngle",          L"Twist",                         types::angle,          Category::View,     storedDirection(51, viewport).from("AC1015"),                         writable,                                       Choices::None,        270,   L"How far the view is turned."},
  { 18, L"LensLength",          L"Lens length",                   types::noUnits,        Category::View,     storedReal(42, viewport, 50).positive().from("AC1015"),               writable,                                       Choices::None,        280,   L"Focal length of a perspective view, in millimeters."},
};
// clang-format on

}  // namespace
}  // namespace viewports

constinit const AutomationClass classes::VeltPViewport = {
    .clsid = CLSID_VeltPViewport,
    .name = L"VeltPViewport",
    .label = L"Viewport",
    .dxfName = "VIEWPORT",
    .help = L"A window in a sheet of paper.",
    .general = &entityRows,
    .rows = viewports::rows,
};

}  // namespace velt::automation
