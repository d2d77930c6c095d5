#pragma once

// Where plug-ins stand that are called by a name.

#include <filesystem>
#include <string>
#include <vector>

namespace velt::tool {

// The folders of the environment variable VELT_PLUGIN_PATH, with colons between them, then those of the installation or
// the build that the program belongs to. Not all of them need to exist.
std::vector<std::filesystem::path> pluginFolders();

// "material" for material.so in one of the folders; a name with a slash or with ".so" is a file as it stands. Throws
// Failure for one that there is not, with the names that there are.
std::filesystem::path pluginFile(const std::string& name);

// Sorted, each once.
std::vector<std::string> installedPlugins();

}  // namespace velt::tool
