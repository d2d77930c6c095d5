#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace spaceFaces {
namespace {

using platform::Category;

constexpr const char* face = "AcDbFace";

// A face of three corners may leave the fourth one out.
Vector3 getFourthCorner(const Subject& subject) {
  return pointAt(subject.lens(), 13, face, pointAt(subject.lens(), 12, face));
}

void putFourthCorner(const Subject& subject, const Vector3& place) {
  Editor(subject).point(13, face, place);
}

// Stored as what is hidden.
template <int Edge>
bool getEdgeVisible(const Subject& subject) {
  return (subject.lens().integer(70, face, 0) & (1 << Edge)) == 0;
}

template <int Edge>
void putEdgeVisible(const Subject& subject, const bool& visible) {
  const std::int64_t hidden = subject.lens().integer(70, face, 0);
  constexpr std::int64_t mask = 1 << Edge;
  Editor(subject).integer(70, face, visible ? hidden & ~mask : hidden | mask, 0);
}

// Of the two triangles that a face is drawn as.
double getArea(const Subject& subject) {
  const database::Lens lens = subject.lens();
  const Vector3 first = pointAt(lens, 10, face);
  const Vector3 third = pointAt(lens, 12, face);
  const Vector3 toSecond = pointAt(lens, 11, face) - first;
  const Vector3 toThird = third - first;
  const Vector3 toFourth = getFourthCorner(subject) - first;
  return (length(cross(toSecond, toThird)) + length(cross(toThird, toFourth))) / 2;
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name             label        type         category            access                                             writability                            choices        weight help
  {  1, L"Corner1",      L"Corner 1", VT_VARIANT,  Category::Geometry, worldPoint(10, face),                              writable,                              Choices::None, 110,   L"First corner."},
  {  2, L"Corner2",      L"Corner 2", VT_VARIANT,  Category::Geometry, worldPoint(11, face),                              writable,                              Choices::None, 120,   L"Second corner."},
  {  3, L"Corner3",      L"Corner 3", VT_VARIANT,  Category::Geometry, worldPoint(12, face),                              writable,                              Choices::None, 130,   L"Third corner."},
  {  4, L"Corner4",      L"Corner 4", VT_VARIANT,  Category::Geometry, computedPoint<getFourthCorner, putFourthCorner>(), writable,                              Choices::None, 140,   L"Fourth corner; the same as the third one for a triangle."},
  {  5, L"Area",         L"Area",     types::area, Category::Geometry, computed<getArea>(),                               readOnly(reasons::followsFromCorners), Choices::None, 150,   L"Of the two triangles that the corners make."},
  {  6, L"VisibleEdge1", L"Edge 1",   VT_BOOL,     Category::Geometry, computed<getEdgeVisible<0>, putEdgeVisible<0>>(),  writable,                              Choices::None, 160,   L"Whether the edge from corner 1 to corner 2 is drawn."},
  {  7, L"VisibleEdge2", L"Edge 2",   VT_BOOL,     Category::Geometry, computed<getEdgeVisible<1>, putEdgeVisible<1>>(),  writable,                              Choices::None, 170,   L"Whether the edge from corner 2 to corner 3 is drawn."},
  {  8, L"VisibleEdge3", L"Edge 3",   VT_BOOL,     Category::Geometry, computed<getEdgeVisible<2>, putEdgeVisible<2>>(),  writable,                              Choices::None, 180,   L"Whether the edge from corner 3 to corner 4 is drawn."},
  {  9, L"VisibleEdge4", L"Edge 4",   VT_BOOL,     Category::Geometry, computed<getEdgeVisible<3>, putEdgeVisible<3>>(),  writable,                              Choices::None, 190,   L"Whether the edge from corner 4 to corner 1 is drawn."},
};
// clang-format on

}  // namespace
}  // namespace spaceFaces

constinit const AutomationClass classes::Velt3DFace = {
    .clsid = CLSID_Velt3DFace,
    .name = L"Velt3DFace",
    .label = L"3D Face",
    .dxfName = "3DFACE",
    .help = L"A plane of three or four corners in space.",
    .general = &entityRows,
    .rows = spaceFaces::rows,
};

}  // namespace velt::automation
