#pragma once

// The manual pages of the commands, made from the description that the command line is parsed with.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <string>
#include <vector>

namespace velt::tool {

// The page of the program, or of one of its commands, as man(7) reads it.
std::string manPage(const CLI::App& command);

// Writes the pages of the program and of each command that its help lists, as veltprops.1 and veltprops-show.1. Throws
// Failure when one cannot be written.
void writeManPages(const CLI::App& program, const std::filesystem::path& folder);

// The commands that the help lists.
std::vector<const CLI::App*> listedCommands(const CLI::App& program);

// "veltprops show [OPTIONS] DRAWING..."
std::string usageOf(const CLI::App& command);

}  // namespace velt::tool
