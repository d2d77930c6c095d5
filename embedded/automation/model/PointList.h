#pragma once

// Rows that are lists of points in space, each of which is a group of three elements.

#include <cstddef>
#include <span>
#include <vector>

#include "embedded/automation/model/Access.h"
#include "embedded/database/LastAsked.h"

namespace velt::automation {

using PointListReader = std::vector<Vector3> (*)(const Subject&);

// What the reader finds. Kept for the entity that this thread asked last, so that reading the elements one by one does
// not run through the entity each time. It stays where it is until the next call.
template <PointListReader Read>
[[nodiscard]] const std::vector<Vector3>& pointList(const Subject& subject) {
  thread_local database::LastAsked<std::vector<Vector3>> last;
  return last.of(subject.id(), subject.drawing(), [&] { return Read(subject); });
}

// The points that an entity stores under one code.
[[nodiscard]] std::vector<Vector3> storedPoints(const Subject& subject, int code, const char* subclass);

// x, y and z in turn.
[[nodiscard]] std::vector<double> coordinatesOf(std::span<const Vector3> points);

[[nodiscard]] double coordinateOf(const Vector3& point, std::size_t number);

inline constexpr const wchar_t* vertexLabels[] = {L"Vertex X", L"Vertex Y", L"Vertex Z"};

namespace access {

template <PointListReader Read>
std::vector<double> getPointList(const Subject& subject) {
  return coordinatesOf(pointList<Read>(subject));
}

template <PointListReader Read>
std::size_t pointListCount(const Subject& subject, const PropertyRow&) {
  return pointList<Read>(subject).size();
}

template <PointListReader Read>
double getPointListElement(const Subject& subject, const PropertyRow&, std::size_t element) {
  return coordinateOf(pointList<Read>(subject)[element / 3], element % 3);
}

template <PointListReader Read, const wchar_t* const (&Labels)[3]>
inline constexpr ElementAccess pointListElements = {
    .labels = Labels,
    .grouping = 1,
    .groups = pointListCount<Read>,
    .get = getPointListElement<Read>,
};

}  // namespace access

template <PointListReader Read, const wchar_t* const (&Labels)[3] = vertexLabels>
constexpr Access computedPoints() {
  Access made = computed<access::getPointList<Read>>();
  made.elements = &access::pointListElements<Read, Labels>;
  return made;
}

}  // namespace velt::automation
