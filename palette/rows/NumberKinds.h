#pragma once

// What the real number of a row means to people. The row's kind tells it: that of the property's declared type or,
// for a few properties, the one that the layer settles when it reads the value.

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "propdata/VeltPropData.h"

namespace velt::palette {

// In radians; people read and write degrees.
constexpr bool isAngle(std::int32_t customType) {
  constexpr std::array<std::int32_t, 3> kinds = {PropertyKind::angle, PropertyKind::ellipseEndAngle,
                                                 PropertyKind::hatchAngle};
  return std::find(kinds.begin(), kinds.end(), customType) != kinds.end();
}

constexpr bool isArea(std::int32_t customType) {
  return customType == PropertyKind::area || customType == PropertyKind::shapeArea;
}

constexpr bool isLineweight(std::int32_t customType) {
  return customType == PropertyKind::lineweight || customType == PropertyKind::entityLineweight;
}

// A factor or the like; decimal places of lengths mean nothing to it.
constexpr bool isWithoutUnits(std::int32_t customType) {
  constexpr std::array<std::int32_t, 3> kinds = {PropertyKind::noUnits, PropertyKind::hatchScale,
                                                 PropertyKind::entityLinetypeScale};
  return std::find(kinds.begin(), kinds.end(), customType) != kinds.end();
}

// Such a row's texts have it in the format of lengths.
inline bool isLength(const PROPINFO& row) {
  constexpr std::array<std::int32_t, 7> kinds = {PropertyKind::distance,       PropertyKind::segmentWidth,
                                                 PropertyKind::hatchElevation, PropertyKind::hatchSpacing,
                                                 PropertyKind::elevation,      PropertyKind::imageHeight,
                                                 PropertyKind::imageWidth};
  if (std::find(kinds.begin(), kinds.end(), row.customType) != kinds.end()) return true;
  if (!row.isElement || row.customType != PropertyKind::none) return false;
  // Coordinates, but for those of vectors, which have a direction and no place.
  constexpr std::array<std::wstring_view, 5> vectors = {L"Normal", L"Direction", L"DirectionVector",
                                                        L"StartTangent", L"EndTangent"};
  return std::find(vectors.begin(), vectors.end(), row.name.str()) == vectors.end();
}

// An angle that begins where the drawing's directions do, and not at something of the entity itself.
inline bool isDirection(const PROPINFO& row) {
  if (row.customType != PropertyKind::angle || row.clsid == CLSID_VeltEllipse) return false;
  constexpr std::array<std::wstring_view, 5> directions = {L"Angle", L"Rotation", L"StartAngle", L"EndAngle",
                                                           L"TextRotation"};
  return std::find(directions.begin(), directions.end(), row.name.str()) != directions.end();
}

}  // namespace velt::palette
