#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/images/PixelFrame.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/PointList.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace wipeouts {
namespace {

using platform::Category;

constexpr const char* image = "AcDbWipeout";

// Corners of the boundary in the world; stored against the middle of the first pixel, downwards.
std::vector<Vector3> getVertices(const Subject& subject) {
  const Vector3 size = sizeInPixels(subject);
  const Vector3 origin = pointAt(subject.lens(), 10, image);
  std::vector<Vector3> corners;
  for (const Vector3& stored : storedPoints(subject, 14, image)) {
    corners.push_back(origin + (stored.x + 0.5) * acrossPixel(subject)
                      + (size.y - 0.5 - stored.y) * upPixel(subject));
  }
  return corners;
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                label            type             category            access                         writability                              choices        weight help
  {  1, L"Origin",          L"Position",     VT_VARIANT,      Category::Geometry, worldPoint(10, image),         writable,                                Choices::None, 110,   L"Lower left corner of the area."},
  {  2, L"Rotation",        L"Rotation",     types::angle,    Category::Geometry, computed<pictureRotation>(),   readOnly(reasons::bothEdgesWouldFollow), Choices::None, 120,   L"Direction of the lower edge."},
  {  3, L"Width",           L"Width",        types::distance, Category::Geometry, computed<pictureWidth>(),      readOnly(reasons::boundaryWouldFollow),  Choices::None, 130,   L"Length of the lower edge."},
  {  4, L"Height",          L"Height",       types::distance, Category::Geometry, computed<pictureHeight>(),     readOnly(reasons::boundaryWouldFollow),  Choices::None, 140,   L"Length of the left edge."},
  {  5, L"Vertex",          L"Vertex",       VT_VARIANT,      Category::Geometry, computedPoints<getVertices>(), readOnly(reasons::storedAgainstEdges),   Choices::None, 150,   L"Corners of the boundary."},
  {  6, L"ClippingEnabled", L"Show clipped", VT_BOOL,         Category::Misc,     storedBit(280, image, 1),      readOnly(reasons::boundaryWouldBeMade),  Choices::None, 160,   L"Whether only what lies inside the boundary is hidden."},
};
// clang-format on

}  // namespace
}  // namespace wipeouts

constinit const AutomationClass classes::VeltWipeout = {
    .clsid = CLSID_VeltWipeout,
    .name = L"VeltWipeout",
    .label = L"Wipeout",
    .dxfName = "WIPEOUT",
    .help = L"An area that hides what lies behind it.",
    .general = &entityRows,
    .rows = wipeouts::rows,
};

}  // namespace velt::automation
