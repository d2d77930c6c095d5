#pragma once

// The options of a command line that say which entities are meant.

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "tool/EntitySelection.h"

namespace velt::tool {

// An option that takes several names: see Lists.h. What follows its argument is something else, such as an assignment.
CLI::Option* addList(CLI::App& command, const std::string& name, std::vector<std::string>& list,
                     const std::string& description);

// Which layout is drawn is another question than which entities are selected, so drawing has an option of its own for it.
enum class Layouts { Select, AreChosenOtherwise };

// The request must outlive the parsing.
void addSelection(CLI::App& command, SelectionRequest& selection, Layouts layouts = Layouts::Select);

}  // namespace velt::tool
