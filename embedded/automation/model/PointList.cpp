#include "embedded/automation/model/PointList.h"

#include "embedded/automation/geometry/EntityGeometry.h"

namespace velt::automation {
namespace {

struct Last {
  VkDbObjectId id;
  std::uint64_t revision = 0;
  PointListReader read = nullptr;
  std::vector<Vector3> points;
};

}  // namespace

const std::vector<Vector3>& pointList(const Subject& subject, PointListReader read) {
  thread_local Last last;
  const std::uint64_t revision = subject.drawing().revision();
  if (last.id != subject.id() || last.revision != revision || last.read != read) {
    last.id = VkDbObjectId::kNull;
    last.points = read(subject);
    last.id = subject.id();
    last.revision = revision;
    last.read = read;
  }
  return last.points;
}

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
