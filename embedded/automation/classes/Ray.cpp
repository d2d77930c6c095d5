#include "embedded/automation/Access.h"
#include "embedded/automation/ClassList.h"
#include "embedded/automation/EntityGeometry.h"
#include "embedded/automation/HostIds.h"
#include "embedded/automation/classes/General.h"

namespace velt::automation {
namespace {

using palette::Category;

constexpr const char* line = "AcDbRay";

Vector3 getBasePoint(const Subject& subject) {
  return pointAt(subject.lens(), 10, line);
}

Vector3 getDirectionVector(const Subject& subject) {
  return direction(pointAt(subject.lens(), 11, line, {1, 0, 0}), {1, 0, 0});
}

Vector3 getSecondPoint(const Subject& subject) {
  return getBasePoint(subject) + getDirectionVector(subject);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                label                type        category            access                                                   choices        weight help
  { 1, L"BasePoint",       L"Base point",       VT_VARIANT, Category::Geometry, worldPoint(10, line),                                    Choices::None, 110,   L"Where the line begins."},
  { 2, L"SecondPoint",     L"Second point",     VT_VARIANT, Category::Geometry, computedPoint<getSecondPoint>(),         Choices::None, 120,   L"Where the line is one unit on. Read-only: it follows from base point and direction."},
  { 3, L"DirectionVector", L"Direction vector", VT_VARIANT, Category::Geometry, computedPoint<getDirectionVector>(), Choices::None, 130,   L"Direction of the line, of length 1. Read-only: its coordinates depend on each other."},
};
// clang-format on

}  // namespace

constinit const AutomationClass classes::VeltRay = {
    CLSID_VeltRay, L"VeltRay", L"Ray", "RAY", L"A line without an end.", &entityRows, rows,
};

}  // namespace velt::automation
