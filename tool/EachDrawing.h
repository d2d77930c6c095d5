#pragma once

// One command over several drawings.

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "tool/Failure.h"

namespace velt::tool {

// How what is printed for one drawing stands beside what is printed for the next.
enum class Sequence {
  // Texts for people, with an empty line between them.
  paragraphs,
  // The elements of one JSON array; a drawing that fails is an object with its name and the error.
  array,
  // Lines that follow each other: CSV, or JSON in lines.
  lines,
};

// Runs the command for each drawing in turn. Of several drawings, one that fails is told on `err`, and the others are
// looked at all the same; the answer is the highest of the exit codes. One drawing alone is printed as it is, and its
// failure is passed on. So is a UsageFailure, which would be that of every drawing.
ExitCode onEachDrawing(const std::vector<std::string>& drawings, Sequence sequence, std::ostream& out,
                       std::ostream& err,
                       const std::function<ExitCode(const std::string& drawing, std::ostream& out)>& command);

}  // namespace velt::tool
