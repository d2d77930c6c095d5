#pragma once

// What lines without an end have in common.

#include <array>

#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"

namespace velt::automation {

inline Vector3 basePointOf(const Subject& subject) {
  return pointAt(subject.lens(), 10, dxf::anySubclass);
}

inline Vector3 directionVectorOf(const Subject& subject) {
  return direction(pointAt(subject.lens(), 11, dxf::anySubclass, {1, 0, 0}), {1, 0, 0});
}

inline Vector3 secondPointOf(const Subject& subject) {
  return basePointOf(subject) + directionVectorOf(subject);
}

// clang-format off
// Of a line whose points are stored after that subclass marker.
constexpr std::array<PropertyRow, 3> endlessLineRows(const char* subclass, const wchar_t* helpOfBasePoint) {
  using platform::Category;
  return {{
    // id name                label                type        category            access                              writability                                          choices        weight help
    {  1, L"BasePoint",       L"Base point",       VT_VARIANT, Category::Geometry, worldPoint(10, subclass),           writable,                                            Choices::None, 110,   helpOfBasePoint},
    {  2, L"SecondPoint",     L"Second point",     VT_VARIANT, Category::Geometry, computedPoint<secondPointOf>(),     readOnly(reasons::followsFromBasePointAndDirection), Choices::None, 120,   L"Where the line is one unit on."},
    {  3, L"DirectionVector", L"Direction vector", VT_VARIANT, Category::Geometry, computedPoint<directionVectorOf>(), readOnly(reasons::coordinatesDependOnEachOther),     Choices::None, 130,   L"Direction of the line, of length 1."},
  }};
}
// clang-format on

}  // namespace velt::automation
