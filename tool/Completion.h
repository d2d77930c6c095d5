#pragma once

// What can stand where somebody is typing a command line, for the completion of a shell (see completion/).
//
// It is found in the description that the command line is parsed with, and in the drawing that the line names: its
// layers, blocks and layouts, and the properties and choices of the entities that the line selects. A line that cannot
// be understood gives fewer candidates; a drawing that cannot be read, where it is needed, throws dxf::Error.

#include <CLI/CLI.hpp>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "tool/EntitySelection.h"

namespace velt::tool {

// What the options of every command are about.
struct Subject {
  std::vector<std::string> drawings{};
  SelectionRequest selection{};
};

struct Candidate {
  // The whole word.
  std::string word;
  // Shown beside it; may be empty.
  std::string help{};
};

struct Completion {
  std::vector<Candidate> candidates{};
  // Files are candidates too: those whose names end so, "*" for all of them; none when it is empty.
  std::string files{};
};

// The last of the words is the one that is typed, and may be empty; all others are complete. The name of the program is
// not among them. `parse` tells what complete words are about, as far as they tell it.
using Parse = std::function<Subject(const std::vector<std::string>& words)>;
Completion complete(const CLI::App& app, const std::vector<std::string>& words, const Parse& parse);

// As the scripts for shells read it: a line with the end of the names of files, then a line for each candidate, with a
// tab between word and help.
void print(const Completion& completion, std::ostream& out);

}  // namespace velt::tool
