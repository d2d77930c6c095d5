#pragma once

// Which dimension style a dimension, a leader or a tolerance has.
//
// Tables name these functions as getters and setters, as they do those of the other files about properties that are no
// single variable of the style: Arrowheads, StyleLines, StyleText, StyleUnits, StyleTolerances. A put there keeps what
// the other properties read, but for those that its comment names; where that is impossible it throws Refusal. A put of
// what is there already changes nothing.

#include <string>

#include "embedded/automation/model/Subject.h"

namespace velt::automation {

std::wstring getDimStyle(const Subject& subject);
// What the entity overrides stays overridden; all else follows. Refused for a leader whose text would have to move.
void putDimStyle(const Subject& subject, const std::wstring& name);

// The text is an entity of its own, whose place follows from the style.
[[nodiscard]] bool leaderLeadsToText(const Subject& subject);

}  // namespace velt::automation
