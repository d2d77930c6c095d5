#pragma once

// The different values behind a row that varies, and how each can be selected.

#include <span>
#include <string>
#include <vector>

#include "palette/Palette.h"

namespace velt::tool {

struct SelectableValue {
  palette::ValueGroup group{};
  // What is added to the selection on the command line to get these entities alone: a condition or, where no condition
  // tells them apart, their handles. Written for a shell.
  std::string option{};
};

// Those that most entities have first. `rows` are all rows of the selection, of which `row` is one.
std::vector<SelectableValue> valuesBehind(const palette::Selection& selection, const palette::Row& row,
                                          std::span<const palette::Row> rows,
                                          const palette::NumberStyle& style);

}  // namespace velt::tool
