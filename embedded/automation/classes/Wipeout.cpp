#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/images/PixelFrame.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/PointList.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
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
  // id name                label            type          category            access                               choices        weight help
  { 1, L"Origin",          L"Position",     VT_VARIANT,   Category::Geometry, worldPoint(10, image),               Choices::None, 110,   L"Lower left corner of the area."},
  { 2, L"Rotation",        L"Rotation",     types::angle, Category::Geometry, computed<pictureRotation>(),             Choices::None, 120,   L"Direction of the lower edge. Read-only: both edges would have to follow it."},
  { 3, L"Width",           L"Width",        VT_R8,        Category::Geometry, computed<pictureWidth>(),                Choices::None, 130,   L"Length of the lower edge. Read-only: the boundary would have to follow it."},
  { 4, L"Height",          L"Height",       VT_R8,        Category::Geometry, computed<pictureHeight>(),               Choices::None, 140,   L"Length of the left edge. Read-only: the boundary would have to follow it."},
  { 5, L"Vertex",          L"Vertex",       VT_VARIANT,   Category::Geometry, computedPoints<getVertices>(),                          Choices::None, 150,   L"Corners of the boundary. Read-only: they are stored against the edges."},
  { 6, L"ClippingEnabled", L"Show clipped", VT_BOOL,      Category::Misc,     storedBit(280, image, 1).readOnly(), Choices::None, 160,   L"Whether only what lies inside the boundary is hidden. Read-only: the boundary would have to be made."},
};
// clang-format on

}  // namespace

constinit const AutomationClass classes::VeltWipeout = {
    CLSID_VeltWipeout, L"VeltWipeout", L"Wipeout", "WIPEOUT", L"An area that hides what lies behind it.",
    &entityRows,       rows,
};

}  // namespace velt::automation
