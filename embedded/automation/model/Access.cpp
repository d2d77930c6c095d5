#include "embedded/automation/model/Access.h"

#include <cmath>
#include <limits>

#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/LastAsked.h"

namespace velt::automation {
namespace {

constexpr const wchar_t* coordinateLabels[] = {L"X", L"Y", L"Z"};

std::int32_t storedInteger(const Subject& subject, const PropertyRow& row) {
  const Access& at = row.access;
  const std::int64_t stored =
      subject.lens().integer(at.code, at.subclass, static_cast<std::int64_t>(at.otherwise));
  if (stored < std::numeric_limits<std::int32_t>::min()
      || stored > std::numeric_limits<std::int32_t>::max()) {
    throw Refusal(DISP_E_OVERFLOW, L"The drawing holds a number that is too large.");
  }
  return static_cast<std::int32_t>(stored);
}

struct AskedPoint {
  const PropertyRow* row = nullptr;
  Vector3 point;
};

// Whoever asks for one coordinate of a point asks for the other two next.
double getCoordinate(const Subject& subject, const PropertyRow& row, std::size_t element) {
  static constinit thread_local database::LastAsked<AskedPoint> last [[gnu::tls_model("initial-exec")]];
  AskedPoint& asked = last.of(subject.id(), subject.drawing(), [] { return AskedPoint(); });
  if (asked.row != &row) asked = {&row, std::get<Vector3>(row.access.get(subject, row))};
  const double coordinates[] = {asked.point.x, asked.point.y, asked.point.z};
  return coordinates[element];
}

void putCoordinate(const Subject& subject, const PropertyRow& row, std::size_t element, double coordinate) {
  auto point = std::get<Vector3>(row.access.get(subject, row));
  (element == 0 ? point.x : element == 1 ? point.y : point.z) = coordinate;
  row.access.put(subject, row, Value(point));
}

}  // namespace

const ElementAccess pointElements = {
    .labels = coordinateLabels,
    .labelsFollowRow = true,
    .get = getCoordinate,
    .put = putCoordinate,
};

Vector3 getNormal(const Subject& subject) {
  return direction(normalOf(subject.lens(), dxf::anySubclass), {0, 0, 1});
}

namespace access {

Value getReal(const Subject& subject, const PropertyRow& row) {
  const Access& at = row.access;
  return subject.lens().real(at.code, at.subclass, at.otherwise);
}

Value getDegrees(const Subject& subject, const PropertyRow& row) {
  const Access& at = row.access;
  return radians(subject.lens().real(at.code, at.subclass, at.otherwise));
}

Value getDirection(const Subject& subject, const PropertyRow& row) {
  const Access& at = row.access;
  return normalizedAngle(radians(subject.lens().real(at.code, at.subclass, at.otherwise)));
}

Value getInteger(const Subject& subject, const PropertyRow& row) {
  return storedInteger(subject, row);
}

Value getBit(const Subject& subject, const PropertyRow& row) {
  return (storedInteger(subject, row) & row.access.mask) != 0;
}

Value getText(const Subject& subject, const PropertyRow& row) {
  return subject.lens().text(row.access.code, row.access.subclass);
}

Value getWorldPoint(const Subject& subject, const PropertyRow& row) {
  return subject.point(row.access.code, row.access.subclass);
}

Value getObjectPoint(const Subject& subject, const PropertyRow& row) {
  const database::Lens lens = subject.lens();
  return frameOf(lens, row.access.subclass).toWorld(pointAt(lens, row.access.code, row.access.subclass));
}

void putReal(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& number = valueAs<double>(value);
  requireWithin(row.access.limit, number);
  if (std::get<double>(getReal(subject, row)) == number) return;
  Editor(subject).real(row.access.code, row.access.subclass, number);
}

void putDegrees(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& angle = valueAs<double>(value);
  if (std::get<double>(getDegrees(subject, row)) == angle) return;
  Editor(subject).real(row.access.code, row.access.subclass, storedDegreesOf(angle));
}

void putDirection(const Subject& subject, const PropertyRow& row, const Value& value) {
  const double angle = normalizedAngle(valueAs<double>(value));
  if (std::get<double>(getDirection(subject, row)) == angle) return;
  Editor(subject).real(row.access.code, row.access.subclass, storedDegreesOf(angle));
}

void putInteger(const Subject& subject, const PropertyRow& row, const Value& value) {
  const Access& at = row.access;
  const auto& number = valueAs<std::int32_t>(value);
  requireWithin(at.limit, number);
  Editor(subject).integer(at.code, at.subclass, number, static_cast<std::int64_t>(at.otherwise));
}

void putBit(const Subject& subject, const PropertyRow& row, const Value& value) {
  const Access& at = row.access;
  const std::int32_t before = storedInteger(subject, row);
  const std::int32_t after = valueAs<bool>(value) ? before | at.mask : before & ~at.mask;
  if (after != before) Editor(subject).integer(at.code, at.subclass, after);
}

void putText(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& text = valueAs<std::wstring>(value);
  requireLine(subject.drawing(), text);
  Editor(subject).text(row.access.code, row.access.subclass, text);
}

void putWorldPoint(const Subject& subject, const PropertyRow& row, const Value& value) {
  Editor(subject).point(row.access.code, row.access.subclass, valueAs<Vector3>(value));
}

void putObjectPoint(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& point = valueAs<Vector3>(value);
  if (std::get<Vector3>(getObjectPoint(subject, row)) == point) return;
  const ObjectFrame frame = frameOf(subject.lens(), row.access.subclass);
  Editor(subject).point(row.access.code, row.access.subclass, frame.toObject(point));
}

}  // namespace access
}  // namespace velt::automation
