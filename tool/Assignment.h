#pragma once

// The assignments of `veltprops set`: which row gets which value.

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "palette/Palette.h"

namespace velt::tool {

struct Assignment {
  // As it was written on the command line.
  std::string text{};
  // The name of the row, as it is shown.
  std::string name{};
  // Which of several rows of that name, from 1; 0 when the command line did not say.
  std::size_t number = 0;
  std::string value{};
  // How the value follows from the present one, of which `value` is the operand then.
  std::optional<palette::Relation> relation{};
};

// NAME=VALUE, NAME+=VALUE and -=, *=, /=, and NAME=~s/OLD/NEW/. The second of several rows of a name is NAME#2, an element
// of one that comes in groups also NAME[2].X. Throws UsageFailure for a text without a name or an equals sign.
Assignment parseAssignment(std::string_view text);

// The row that is meant, by the name that is shown or by the property's own name; upper and lower case do not differ.
// Throws a Failure that says what is possible, when there is no such row, when there are several and the number is 0,
// and when the row cannot be edited.
palette::Row rowFor(const Assignment& assignment, std::span<const palette::Row> rows);

}  // namespace velt::tool
