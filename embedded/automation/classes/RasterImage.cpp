#include <algorithm>
#include <cstdint>
#include <string>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/images/PixelFrame.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/NamedObjects.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace rasterImages {
namespace {

using platform::Category;

constexpr const char* image = "AcDbRasterImage";

std::uint64_t definitionOf(const Subject& subject) {
  return subject.lens().handle(340, image);
}

std::wstring getName(const Subject& subject) {
  return database::objectName(subject.drawing(), definitionOf(subject));
}

std::wstring getImageFile(const Subject& subject) {
  const auto definition = subject.drawing().recordByHandle(definitionOf(subject));
  return definition ? database::Lens(subject.drawing(), *definition).text(1, "AcDbRasterImageDef")
                    : std::wstring();
}

double getScaleFactor(const Subject& subject) {
  return pictureWidth(subject);
}

template <int Code>
std::int32_t getPercent(const Subject& subject) {
  constexpr std::int64_t middle = Code == 283 ? 0 : 50;
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(subject.lens().integer(Code, image, middle), 0, 100));
}

template <int Code>
void putPercent(const Subject& subject, const std::int32_t& percent) {
  if (percent < 0 || percent > 100) throw Refusal(E_INVALIDARG, L"The value lies between 0 and 100.");
  if (getPercent<Code>(subject) != percent) Editor(subject).integer(Code, image, percent);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                label                       type            category               access                                        writability                              choices        weight help
  {  1, L"Origin",          L"Position",                VT_VARIANT,     Category::Geometry,    worldPoint(10, image),                        writable,                                Choices::None, 110,   L"Lower left corner of the image."},
  {  2, L"Rotation",        L"Rotation",                types::angle,   Category::Geometry,    computed<pictureRotation>(),                  readOnly(reasons::bothEdgesWouldFollow), Choices::None, 120,   L"Direction of the lower edge."},
  {  3, L"Width",           L"Width",                   VT_R8,          Category::Geometry,    computed<pictureWidth>(),                     readOnly(reasons::boundaryWouldFollow),  Choices::None, 130,   L"Length of the lower edge."},
  {  4, L"Height",          L"Height",                  VT_R8,          Category::Geometry,    computed<pictureHeight>(),                    readOnly(reasons::boundaryWouldFollow),  Choices::None, 140,   L"Length of the left edge."},
  {  5, L"ScaleFactor",     L"Scale",                   types::noUnits, Category::Geometry,    computed<getScaleFactor>(),                   readOnly(reasons::edgesWouldFollow),     Choices::None, 150,   L"How many drawing units the image is wide."},
  {  6, L"Name",            L"Name",                    VT_BSTR,        Category::Misc,        computed<getName>(),                          readOnly(reasons::otherImagesMayShowIt), Choices::None, 160,   L"What the drawing calls the picture."},
  {  7, L"ImageFile",       L"Path",                    VT_BSTR,        Category::Misc,        computed<getImageFile>(),                     readOnly(reasons::otherImagesMayShowIt), Choices::None, 170,   L"File of the picture."},
  {  8, L"ImageVisibility", L"Show image",              VT_BOOL,        Category::Misc,        storedBit(70, image, 1),                      writable,                                Choices::None, 180,   L"Whether more than the frame is drawn."},
  {  9, L"ClippingEnabled", L"Show clipped",            VT_BOOL,        Category::Misc,        storedBit(280, image, 1),                     readOnly(reasons::boundaryWouldBeMade),  Choices::None, 190,   L"Whether only what lies inside the boundary is drawn."},
  { 10, L"Transparency",    L"Background transparency", VT_BOOL,        Category::Misc,        storedBit(70, image, 8),                      writable,                                Choices::None, 200,   L"Whether the background of the picture lets through what lies behind it."},
  { 11, L"Brightness",      L"Brightness",              VT_I4,          Category::ImageAdjust, computed<getPercent<281>, putPercent<281>>(), writable,                                Choices::None, 210,   L"From 0 to 100; 50 for the picture as it is."},
  { 12, L"Contrast",        L"Contrast",                VT_I4,          Category::ImageAdjust, computed<getPercent<282>, putPercent<282>>(), writable,                                Choices::None, 220,   L"From 0 to 100; 50 for the picture as it is."},
  { 13, L"Fade",            L"Fade",                    VT_I4,          Category::ImageAdjust, computed<getPercent<283>, putPercent<283>>(), writable,                                Choices::None, 230,   L"From 0 to 100; 0 for the picture as it is."},
};
// clang-format on

}  // namespace
}  // namespace rasterImages

constinit const AutomationClass classes::VeltRasterImage = {
    .clsid = CLSID_VeltRasterImage,
    .name = L"VeltRasterImage",
    .label = L"Raster Image",
    .dxfName = "IMAGE",
    .help = L"A placed picture.",
    .general = &entityRows,
    .rows = rasterImages::rows,
};

}  // namespace velt::automation
