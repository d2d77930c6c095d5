#include "embedded/automation/polylines/HeavyPolyline.h"

#include <algorithm>

#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/database/LastAsked.h"

namespace velt::automation {
namespace {

// Of the head.
constexpr std::int64_t closedFlag = 1;
constexpr std::int64_t splineFitFlag = 4;
constexpr std::int64_t polyfaceFlag = 64;

// Of a vertex.
constexpr std::int64_t addedByFit = 1;
constexpr std::int64_t addedBySpline = 8;
constexpr std::int64_t ofSplineFrame = 16;
constexpr std::int64_t isMeshVertex = 64;
constexpr std::int64_t isPolyfacePart = 128;

// Vertices say their kind in several markers, but no code twice.
constexpr std::string_view any = "*";

void addVertex(HeavyPolyline& shape, std::uint32_t record, const database::Lens& head) {
  const database::Lens vertex(head.drawing(), record);
  const std::int64_t headFlags = head.integer(70, any, 0);
  const std::int64_t flags = vertex.integer(70, any, 0);
  if ((headFlags & polyfaceFlag) != 0 && (flags & isMeshVertex) == 0) {
    if ((flags & isPolyfacePart) != 0) ++shape.faces;
    return;
  }
  const Vector3 place = pointAt(vertex, 10, any);
  const bool isOfFrame = (flags & ofSplineFrame) != 0;
  const bool isKnown =
      (headFlags & splineFitFlag) != 0 ? isOfFrame : (flags & (addedByFit | addedBySpline)) == 0;
  if (isKnown) {
    shape.places.push_back(place);
    shape.records.push_back(record);
    shape.widths.push_back(
        {vertex.real(40, any, shape.commonWidths.start), vertex.real(41, any, shape.commonWidths.end)});
  }
  if (!isOfFrame) shape.drawn.push_back({place, vertex.real(42, any, 0)});
}

HeavyPolyline readPolyline(const Subject& subject) {
  HeavyPolyline shape;
  const database::Lens head = subject.lens();
  shape.closed = (head.integer(70, any, 0) & closedFlag) != 0;
  shape.commonWidths = {head.real(40, any, 0), head.real(41, any, 0)};
  const database::RecordRange members = subject.drawing().members(subject.record());
  for (std::uint32_t record = members.first; record < members.first + members.count; ++record) {
    if (!subject.drawing().isErased(record)) addVertex(shape, record, head);
  }
  return shape;
}

}  // namespace

std::optional<double> HeavyPolyline::width() const {
  const double width = widths.empty() ? commonWidths.start : widths.front().start;
  const auto isOfThatWidth = [width](const SegmentWidths& of) {
    return of.start == width && of.end == width;
  };
  const bool isSame =
      widths.empty() ? isOfThatWidth(commonWidths) : std::all_of(widths.begin(), widths.end(), isOfThatWidth);
  return isSame ? std::optional(width) : std::nullopt;
}

const HeavyPolyline& heavyPolyline(const Subject& subject) {
  thread_local database::LastAsked<HeavyPolyline> last;
  return last.of(subject.id(), subject.drawing(), [&] { return readPolyline(subject); });
}

}  // namespace velt::automation
