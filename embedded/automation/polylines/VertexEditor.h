#pragma once

// Changing the vertices of a light-weight polyline. Part of a put: see Editor.h.

#include <cstddef>
#include <vector>

#include "embedded/automation/model/Subject.h"

namespace velt::automation {

enum class VertexPart { X, Y, StartWidth, EndWidth };

// The vertex must be there.

// In the plane of the polyline. A width of a vertex ends the common width: every vertex then has its own, since a
// drawing must not tell both. Throws Refusal for a width below 0.
void putVertexPart(const Subject& polyline, std::size_t vertex, VertexPart part, double value);

// x and y in turn. Throws Refusal when these are not as many vertices as the polyline has: what stands between two
// vertices cannot be told from the vertices.
void putVertexPlaces(const Subject& polyline, const std::vector<double>& coordinates);

// Takes away what the vertices have of their own. Throws Refusal for a width below 0.
void putCommonWidth(const Subject& polyline, double width);

}  // namespace velt::automation
