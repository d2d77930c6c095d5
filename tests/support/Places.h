#pragma once

// Where the tree and what was built of it stand.

#include <filesystem>

namespace velt::tests {

std::filesystem::path sourceFolder();
std::filesystem::path buildFolder();
// The sample plug-ins, and those that misbehave.
std::filesystem::path pluginFolder();
std::filesystem::path testPluginFolder();

}  // namespace velt::tests
