#pragma once

// What `veltprops set` is told: which row gets which value.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "palette/Palette.h"

namespace velt::tool {

struct Assignment {
  std::string text{};      // as it stood on the command line
  std::string name{};      // of the row, as shown
  std::size_t number = 0;  // which of several rows of that name, from 1; 0 when none was told
  std::string value{};
};

// Throws UsageFailure for a text without a name or an equals sign.
Assignment parseAssignment(std::string_view text);

// The row that is meant: by the name that is shown, or by the property's own name, whatever the case. Throws Failure,
// with what is possible, when there is no such row, when there are several and none was told, and when the row cannot
// be edited.
palette::Row rowFor(const Assignment& assignment, std::span<const palette::Row> rows);

// What the value means to the row. Throws Failure, with what is possible, when it means nothing.
palette::Value valueFor(const Assignment& assignment, const palette::Row& row);

}  // namespace velt::tool
