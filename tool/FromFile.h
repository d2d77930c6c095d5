#pragma once

// Writes the values of a file to a drawing, wherever they differ.

#include <vector>

#include "embedded/database/Drawing.h"
#include "tool/Applied.h"
#include "tool/EntitySelection.h"
#include "tool/ValuesFile.h"

namespace velt::tool {

struct FileOutcome {
  // One for each value that differed from that of an entity before anything was written; what follows from such a value,
  // as a diameter from the radius, is not written once more.
  std::vector<Applied> applied{};
  std::size_t entities = 0;
  // Values that were there already.
  std::size_t same = 0;
};

// Of entities by their handles those that are selected, or all of them where the selection is empty. Ends after the first
// refusal unless told to go on. Throws Failure, before anything is written, for an entity or a property that is not there.
FileOutcome applyFile(const ValuesFile& file, const std::string& name, database::Drawing& drawing,
                      const SelectionRequest& selection, bool keepGoing);

}  // namespace velt::tool
