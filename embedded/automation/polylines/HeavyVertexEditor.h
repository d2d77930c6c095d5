#pragma once

// Changing polylines and meshes whose vertices are records of their own. Part of a put: see Editor.h.
//
// What a smoothed one shows is a second sequence of vertices, which nobody here can make: whatever these would have to
// follow is refused then.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "embedded/automation/model/PointList.h"
#include "embedded/automation/polylines/HeavyPolyline.h"

namespace velt::automation {

// By the group codes of a vertex.
enum class HeavyVertexPart : std::int16_t { X = 10, Y = 20, Z = 30, StartWidth = 40, EndWidth = 41 };

// Of a vertex that is there, in the plane of a flat polyline. Throws Refusal for a smoothed one, and for a width below 0.
void putHeavyVertexPart(const Subject& polyline, std::size_t vertex, HeavyVertexPart part, double value);

// So many coordinates of each vertex in turn. Throws Refusal for a smoothed one, and for another number of vertices than
// there is.
void putHeavyVertexPlaces(const Subject& polyline, std::size_t ofEach,
                          const std::vector<double>& coordinates);

// Takes away what the vertices have of their own, unless it is the common width already. Throws Refusal for a width
// below 0.
void putHeavyCommonWidth(const Subject& polyline, double width);

// The height of a flat polyline, which each of its vertices repeats.
void putHeavyElevation(const Subject& polyline, double elevation);

// --- for the tables of the classes ---

// The vertices that the drawing stores are then not those that are drawn.
extern const Obstacle isSmoothed;

[[nodiscard]] std::vector<Vector3> heavyVertexPlaces(const Subject& polyline);

namespace access {

void putHeavyVertices(const Subject&, const PropertyRow&, const Value&);
void putHeavyVertexElement(const Subject&, const PropertyRow&, std::size_t element, double value);
void putBitUnlessSmoothed(const Subject&, const PropertyRow&, const Value&);

inline constexpr ElementAccess heavyVertexElements = {
    .labels = vertexLabels,
    .grouping = 1,
    .groups = pointListCount<heavyVertexPlaces>,
    .get = getPointListElement<heavyVertexPlaces>,
    .put = putHeavyVertexElement,
};

}  // namespace access

// The vertices as points in space.
constexpr Access heavyVertices() {
  Access made = computedPoints<heavyVertexPlaces>();
  made.put = access::putHeavyVertices;
  made.elements = &access::heavyVertexElements;
  return made;
}

constexpr Access bitUnlessSmoothed(int code, const char* subclass, std::int32_t mask) {
  Access made = storedBit(code, subclass, mask);
  made.put = access::putBitUnlessSmoothed;
  return made;
}

}  // namespace velt::automation
