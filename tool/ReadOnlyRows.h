#pragma once

// Why a row is read-only, in the words of the host.

#include <cstddef>
#include <string>
#include <vector>

#include "embedded/automation/model/RefusalLog.h"
#include "palette/Palette.h"

namespace velt::tool {

// A clause for the middle of a sentence: "the pattern follows the boundary". Empty for a row that can be edited, and
// where the host gives no reason. Of several entities it is that of the first.
std::string readOnlyReason(const palette::Row& row);

// Why the entity refuses every value of a row that the class lets be edited, for the middle of a sentence; empty when it
// does not.
std::string refusalOf(const palette::Row& row, VkDbObjectId entity);

// Puts the reasons of a write into words: what refuses every value first, else what the log heard of elements.
void tellWhyRefused(palette::Report& report, const palette::Selection& selection, const palette::Row& row,
                    const automation::RefusalLog& log);

// The entities that refuse every value of a row that can be edited: an object says for itself alone, and a write is the
// first to learn it otherwise. Those on locked layers, of which a palette tells once for all rows, are not among them.
struct Refusals {
  std::vector<std::size_t> entities{};
  // Of the first.
  std::string reason{};
};
Refusals refusalsOf(const palette::Selection& selection, const palette::Row& row);

}  // namespace velt::tool
