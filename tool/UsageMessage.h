#pragma once

// What is said about a command line that cannot be parsed.

#include <CLI/CLI.hpp>
#include <string>

namespace velt::tool {

// One sentence: what is wrong, and the command, option or help that was probably meant. `program` has been asked to parse
// the line and answered with the error.
std::string usageMessage(const CLI::App& program, const CLI::ParseError& error);

}  // namespace velt::tool
