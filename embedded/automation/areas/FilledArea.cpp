#include "embedded/automation/areas/FilledArea.h"

#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"

namespace velt::automation {
namespace {

using platform::Category;

constexpr const char* trace = "AcDbTrace";

// The corners are stored crosswise: the third one lies opposite to the second.

double getElevation(const Subject& subject) {
  return pointAt(subject.lens(), 10, trace).z;
}

void putElevation(const Subject& subject, const double& elevation) {
  Editor editor(subject);
  for (const int code : {10, 11, 12, 13}) {
    Vector3 corner = pointAt(subject.lens(), code, trace);
    if (!subject.lens().has(code, trace) || corner.z == elevation) continue;
    corner.z = elevation;
    editor.point(code, trace, corner);
  }
}

template <int Code>
Vector3 getCorner(const Subject& subject) {
  const database::Lens lens = subject.lens();
  const Vector3 third = pointAt(lens, 12, trace);
  return frameOf(lens, trace).toWorld(pointAt(lens, Code, trace, third));
}

// The corners lie in one plane: it follows a corner that is put above or below it.
template <int Code>
void putCorner(const Subject& subject, const Vector3& place) {
  if (getCorner<Code>(subject) == place) return;
  const Vector3 corner = frameOf(subject.lens(), trace).toObject(place);
  Editor(subject).point(Code, trace, corner);
  putElevation(subject, corner.z);
}

// clang-format off
constexpr PropertyRow table[] = {
  // id name          label         type             category                   access                                         writability                            choices        weight help
  {  1, L"Thickness", L"Thickness", types::distance, Category::General,         storedReal(39, trace),                         writable,                              Choices::None,  90,   L"How far the area is pulled along its normal."},
  {  2, L"Corner1",   L"Corner 1",  VT_VARIANT,      Category::Geometry,        computedPoint<getCorner<10>, putCorner<10>>(), writable,                              Choices::None, 110,   L"First corner."},
  {  3, L"Corner2",   L"Corner 2",  VT_VARIANT,      Category::Geometry,        computedPoint<getCorner<11>, putCorner<11>>(), writable,                              Choices::None, 120,   L"Second corner."},
  {  4, L"Corner3",   L"Corner 3",  VT_VARIANT,      Category::Geometry,        computedPoint<getCorner<12>, putCorner<12>>(), writable,                              Choices::None, 130,   L"Third corner, opposite to the second."},
  {  5, L"Corner4",   L"Corner 4",  VT_VARIANT,      Category::Geometry,        computedPoint<getCorner<13>, putCorner<13>>(), writable,                              Choices::None, 140,   L"Fourth corner, opposite to the first."},
  {  6, L"Elevation", L"Elevation", VT_R8,           Category::Geometry,        computed<getElevation, putElevation>(),        writable,                              Choices::None, 150,   L"Height of the plane over the origin, along its normal."},
  {  7, L"Normal",    L"Normal",    VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),                    readOnly(reasons::cornersWouldFollow), Choices::None, 160,   L"Upright on the plane of the area."},
};
// clang-format on

}  // namespace

const std::span<const PropertyRow> filledAreaRows = table;

}  // namespace velt::automation
