#pragma once

// What is written to a row, as people write it: a value, or how the new value follows from the present one.

#include <optional>
#include <string>
#include <string_view>

#include "palette/Palette.h"

namespace velt::tool {

struct RowChange {
  std::string value{};
  // How the value follows from the present one, of which `value` is the operand then.
  std::optional<palette::Relation> relation{};
};

// The relation of +=, -=, *= and /=, by the character before the equals sign.
std::optional<palette::Relation> relationOf(char sign);
// Whether a value begins as ~s/OLD/NEW/ does. Without the first character it is the operand of Relation::replaced.
bool isReplacement(std::string_view value);

// What is written into a cell of the row: a value, +=5, -=5, *=2, /=2 or ~s/OLD/NEW/. A row that holds no numbers takes
// what looks like reckoning as it is.
RowChange rowChangeIn(const palette::Row& row, std::string_view written);

// Writes the change to every entity, as Selection::writeText() and writeRelative() do. Refusals say why in the words of
// the tables of the classes, where these know it.
palette::Report write(palette::Selection& selection, const palette::Row& row, const RowChange& change,
                      const palette::WriteOptions& options);

}  // namespace velt::tool
