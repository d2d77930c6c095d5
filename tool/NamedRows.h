#pragma once

// The rows that a name on the command line means, where values are read.

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "palette/Palette.h"

namespace velt::tool {

// NAME#2 without its number, and the number; 0 where there is none.
std::pair<std::string, std::size_t> withoutNumber(std::string_view name);

// The rows of that label or, when there are none, of that name. When several properties share the label, those of the
// one that is shown first: of a block reference, Name is the block's and not that of the class. NAME#2 is the second of
// all rows of that label.
std::vector<palette::Row> rowsMeant(std::span<const palette::Row> rows, std::string_view name);

// The name under which rowsMeant() finds each of the rows: its label, or its own name when another property with that
// label is shown before it.
std::vector<std::string> namesToFind(std::span<const palette::Row> rows);

}  // namespace velt::tool
