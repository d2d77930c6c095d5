#include <algorithm>
#include <cstdint>
#include <string>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/NamedObjects.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace underlays {
namespace {

using platform::Category;

constexpr const char* underlay = "AcDbUnderlayReference";

std::uint64_t definitionOf(const Subject& subject) {
  return subject.lens().handle(340, underlay);
}

std::wstring ofDefinition(const Subject& subject, int code) {
  const auto definition = subject.drawing().recordByHandle(definitionOf(subject));
  return definition ? database::Lens(subject.drawing(), *definition).text(code, "AcDbUnderlayDefinition")
                    : std::wstring();
}

std::wstring getName(const Subject& subject) {
  return database::objectName(subject.drawing(), definitionOf(subject));
}

std::wstring getFile(const Subject& subject) {
  return ofDefinition(subject, 1);
}

std::wstring getSheet(const Subject& subject) {
  return ofDefinition(subject, 2);
}

// A percentage that stays within bounds, also where a drawing goes beyond.
template <int Code, std::int32_t Least, std::int32_t Most, std::int32_t Otherwise>
std::int32_t getBounded(const Subject& subject) {
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(subject.lens().integer(Code, underlay, Otherwise), Least, Most));
}

template <int Code, std::int32_t Least, std::int32_t Most, std::int32_t Otherwise>
void putBounded(const Subject& subject, const std::int32_t& percent) {
  if (percent < Least || percent > Most) {
    throw Refusal(E_INVALIDARG, L"The value lies between " + std::to_wstring(Least) + L" and "
                                    + std::to_wstring(Most) + L".");
  }
  if (getBounded<Code, Least, Most, Otherwise>(subject) != percent)
    Editor(subject).integer(Code, underlay, percent);
}

template <int Code, std::int32_t Least, std::int32_t Most, std::int32_t Otherwise>
constexpr Access bounded() {
  return computed<getBounded<Code, Least, Most, Otherwise>, putBounded<Code, Least, Most, Otherwise>>();
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                   label             type            category                   access                                 writability                                        choices        weight help
  {  1, L"InsertionPoint",     L"Position",      VT_VARIANT,     Category::Geometry,        worldPoint(10, underlay),              writable,                                          Choices::None, 110,   L"Where the sheet's origin lies."},
  {  2, L"XScaleFactor",       L"Scale X",       types::noUnits, Category::Geometry,        storedReal(41, underlay, 1).notZero(), writable,                                          Choices::None, 120,   L"Scale along the sheet's X axis."},
  {  3, L"YScaleFactor",       L"Scale Y",       types::noUnits, Category::Geometry,        storedReal(42, underlay, 1).notZero(), writable,                                          Choices::None, 130,   L"Scale along the sheet's Y axis."},
  {  4, L"Rotation",           L"Rotation",      types::angle,   Category::Geometry,        storedDirection(50, underlay),         writable,                                          Choices::None, 140,   L"Direction of the sheet's X axis."},
  {  5, L"Name",               L"Name",          VT_BSTR,        Category::Misc,            computed<getName>(),                   readOnly(reasons::otherUnderlaysMayShowIt),        Choices::None, 150,   L"What the drawing calls the sheet."},
  {  6, L"File",               L"Path",          VT_BSTR,        Category::Misc,            computed<getFile>(),                   readOnly(reasons::otherUnderlaysMayShowIt),        Choices::None, 160,   L"File that the sheet is in."},
  {  7, L"ItemName",           L"Sheet",         VT_BSTR,        Category::Misc,            computed<getSheet>(),                  readOnly(reasons::otherUnderlaysMayShowIt),        Choices::None, 170,   L"Which of the file's sheets it is."},
  {  8, L"UnderlayVisibility", L"Show underlay", VT_BOOL,        Category::Misc,            storedBit(280, underlay, 2),           writable,                                          Choices::None, 180,   L"Whether more than the frame is drawn."},
  {  9, L"Monochrome",         L"Monochrome",    VT_BOOL,        Category::ImageAdjust,     storedBit(280, underlay, 4),           writable,                                          Choices::None, 190,   L"Whether all is drawn in one color."},
  { 10, L"AdjustColors",       L"Adjust colors", VT_BOOL,        Category::ImageAdjust,     storedBit(280, underlay, 8),           writable,                                          Choices::None, 200,   L"Whether colors that the background would swallow are changed."},
  { 11, L"Contrast",           L"Contrast",      VT_I4,          Category::ImageAdjust,     bounded<281, 20, 100, 100>(),          writable,                                          Choices::None, 210,   L"From 20 to 100; 100 for the sheet as it is."},
  { 12, L"Fade",               L"Fade",          VT_I4,          Category::ImageAdjust,     bounded<282, 0, 80, 0>(),              writable,                                          Choices::None, 220,   L"From 0 to 80; 0 for the sheet as it is."},
  { 13, L"ClippingEnabled",    L"Show clipped",  VT_BOOL,        Category::Misc,            storedBit(280, underlay, 1),           readOnly(reasons::boundaryWouldBeMade),            Choices::None, 230,   L"Whether only what lies inside the boundary is drawn."},
  { 14, L"Normal",             L"Normal",        VT_VARIANT,     Category::Visualization3D, computedPoint<getNormal>(),            readOnly(reasons::positionAndRotationWouldFollow), Choices::None, 240,   L"Upright on the plane of the sheet."},
};
// clang-format on

}  // namespace
}  // namespace underlays

constinit const AutomationClass classes::VeltPdfUnderlay = {
    .clsid = CLSID_VeltPdfUnderlay,
    .name = L"VeltPdfUnderlay",
    .label = L"PDF Underlay",
    .dxfName = "PDFUNDERLAY",
    .help = L"A sheet of another document, placed below the drawing.",
    .general = &entityRows,
    .rows = underlays::rows,
};

}  // namespace velt::automation
