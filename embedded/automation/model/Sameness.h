#pragma once

// Whether what is read after a put is what was put.
//
// A value may come back in another form and still be the same: rounded on the way to another unit, an angle less whole
// turns, a name as its table spells it.

#include "embedded/automation/model/PropertyTable.h"
#include "embedded/automation/model/Refusal.h"

namespace velt::automation {

// Up to rounding. `scale` is the size of the largest number that both were computed with.
[[nodiscard]] bool isSameNumber(double put, double got, double scale = 0);
// Up to rounding and whole turns.
[[nodiscard]] bool isSameAngle(const Value& put, const Value& got);

// Names that a table of the drawing holds, whatever their case.
[[nodiscard]] bool isSameName(const Value& put, const Value& got);

// By the row's own comparison; where it has none, as its type and its choices suggest. Objects that no comparison is
// given for count as the same.
[[nodiscard]] bool isSameValue(const PropertyRow& row, const Value& put, const Value& got);

// To the last bit and letter, so that a put of it has nothing to change. Never for objects.
[[nodiscard]] bool isExactlySame(const Value& put, const Value& got);

// Whether a put of another number left the number as it was, which rounding must not hide. Angles, and rows that compare by
// themselves, have several numbers for one value.
[[nodiscard]] bool isNumberLeft(const PropertyRow& row, const Value& before, const Value& got);

// What to tell the caller of a put whose value does not come back.
[[nodiscard]] Refusal notGivenBack(const Value& got);

}  // namespace velt::automation
