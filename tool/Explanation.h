#pragma once

// Why a row is as it is, and why there is none: in sentences, for people.

#include <cstddef>
#include <string>
#include <vector>

#include "palette/Palette.h"
#include "tool/ValueGroups.h"

namespace velt::tool {

struct Advice {
  // Anywhere; empty for advice that only the command line can follow.
  std::string step{};
  // What the command line adds to it, just after it.
  std::string onCommandLine{};
};

// The cause of a row that no entity has.
inline constexpr const char* unknownCause = "unknown";

// What is said of one row, or of one that is missing.
struct Explanation {
  // For programs: "shown", "varying", "readOnly", or why there is no row.
  std::string cause{};
  // Sentences: what is so, and what can be done about it.
  std::vector<std::string> said{};
  std::vector<Advice> advice{};
  // The entities that the cause is about.
  std::vector<std::size_t> entities{};
  std::vector<std::string> parts{};
  std::vector<SelectableValue> values{};
};

// Of one of the rows of the selection's last query.
Explanation explainRow(const palette::Selection& selection, const palette::Row& row,
                       const palette::NumberStyle& style);
// Of a label or name of which the selection's last query has no row, also when that query failed. Asks the entities one
// by one.
Explanation explainAbsence(const palette::Selection& selection, const std::string& name);

}  // namespace velt::tool
