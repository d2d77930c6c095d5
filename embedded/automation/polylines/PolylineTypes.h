#pragma once

// How polylines and meshes whose vertices are records of their own are smoothed.

#include "embedded/automation/model/UserTypes.h"

namespace velt::automation::types {

// clang-format off

inline constexpr EnumMember polylineFitMembers[] = {
  // value  name               label
  { 0,      L"NoFit",          L"None"},
  { 1,      L"CurveFit",       L"Fit curve"},
  { 5,      L"Quadratic",      L"Quadratic"},
  { 6,      L"Cubic",          L"Cubic"},
};
inline constexpr UserType polylineFit = {L"VeltPolylineFit", L"How a polyline is smoothed.", VT_I4, polylineFitMembers};

inline constexpr EnumMember spatialPolylineFitMembers[] = {
  // value  name               label
  { 0,      L"NoFit",          L"None"},
  { 5,      L"Quadratic",      L"Quadratic"},
  { 6,      L"Cubic",          L"Cubic"},
};
inline constexpr UserType spatialPolylineFit = {L"VeltSpatialPolylineFit", L"How a polyline in space is smoothed.", VT_I4, spatialPolylineFitMembers};

inline constexpr EnumMember meshFitMembers[] = {
  // value  name               label
  { 0,      L"NoFit",          L"None"},
  { 5,      L"Quadratic",      L"Quadratic"},
  { 6,      L"Cubic",          L"Cubic"},
  { 8,      L"Bezier",         L"Bezier"},
};
inline constexpr UserType meshFit = {L"VeltMeshFit", L"How a mesh is smoothed.", VT_I4, meshFitMembers};

// clang-format on

}  // namespace velt::automation::types
