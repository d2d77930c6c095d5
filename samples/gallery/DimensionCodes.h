#pragma once

// The variables of a dimension style by their group codes. A style holds them as pairs of these codes; a single
// dimension or leader overrides them in its extended data, where the code stands as a number before the value.

#include <initializer_list>

#include "samples/builder/Pairs.h"

namespace velt::samples::dimensions {

inline constexpr int textAround = 3;  // "<>" stands for the measurement
inline constexpr int overallScale = 40;
inline constexpr int arrowSize = 41;
inline constexpr int extensionOffset = 42;
inline constexpr int extensionBeyond = 44;
inline constexpr int textAbove = 77;
inline constexpr int hiddenZeros = 78;
inline constexpr int textHeight = 140;
inline constexpr int centreMark = 141;
inline constexpr int textGap = 147;
inline constexpr int alternatePrecision = 171;
inline constexpr int ownArrows = 173;
inline constexpr int lineColor = 176;
inline constexpr int extensionColor = 177;
inline constexpr int textColor = 178;
inline constexpr int precision = 271;
inline constexpr int tolerancePrecision = 272;
inline constexpr int unit = 277;
inline constexpr int decimalSeparator = 278;
inline constexpr int textStyle = 340;
inline constexpr int leaderArrow = 341;
inline constexpr int firstArrow = 343;
inline constexpr int secondArrow = 344;
inline constexpr int lineType = 345;
inline constexpr int lineWeight = 371;
inline constexpr int extensionWeight = 372;

// One variable of those that an entity overrides: a whole number, a real one, or a handle.
inline Pairs overridingInteger(int variable, int number) {
  return {{1070, variable}, {1070, number}};
}
inline Pairs overridingReal(int variable, int number) {
  return {{1070, variable}, {1040, number}};
}
inline Pairs overridingHandle(int variable, Handle handle) {
  return {{1070, variable}, {1005, handle}};
}

// The extended data with the variables that an entity overrides.
inline Pairs overrides(const Pairs& variables) {
  return {{1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, variables, {1002, "}"}};
}

}  // namespace velt::samples::dimensions
