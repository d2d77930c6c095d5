#include "embedded/automation/model/PointList.h"

#include "embedded/automation/geometry/EntityGeometry.h"

namespace velt::automation {

std::vector<Vector3> storedPoints(const Subject& subject, int code, const char* subclass) {
  std::vector<Vector3> points;
  for (const database::Point& point : subject.lens().points(code, subclass))
    points.push_back(vectorOf(point));
  return points;
}

std::vector<double> coordinatesOf(std::span<const Vector3> points) {
  std::vector<double> coordinates;
  coordinates.reserve(3 * points.size());
  for (const Vector3& point : points)
    coordinates.insert(coordinates.end(), {point.x, point.y, point.z});
  return coordinates;
}

double coordinateOf(const Vector3& point, std::size_t number) {
  return number == 0 ? point.x : number == 1 ? point.y : point.z;
}

}  // namespace velt::automation
