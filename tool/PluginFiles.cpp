#include "tool/PluginFiles.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cstdlib>
#include <set>
#include <sstream>
#include <system_error>

#include "tool/Failure.h"
#include "tool/Version.h"

namespace velt::tool {

namespace {

namespace fs = std::filesystem;

constexpr const char* extension = ".so";

}  // namespace

std::vector<fs::path> pluginFolders() {
  std::vector<fs::path> folders;
  const char* const listed = std::getenv("VELT_PLUGIN_PATH");
  std::istringstream parts(listed != nullptr ? listed : "");
  for (std::string folder; std::getline(parts, folder, ':');) {
    if (!folder.empty()) folders.emplace_back(folder);
  }
  std::error_code unknown;
  const fs::path program = fs::read_symlink("/proc/self/exe", unknown);
  if (program.empty()) return folders;
  // As installed, and as built.
  for (const char* const folder : {pluginFolderFromProgram, "../plugins"})
    folders.push_back((program.parent_path() / folder).lexically_normal());
  return folders;
}

fs::path pluginFile(const std::string& name) {
  std::error_code unknown;
  if (name.find('/') != std::string::npos || name.ends_with(extension)) {
    if (!fs::exists(name, unknown)) throw Failure(fmt::format("{}: no such plug-in", name));
    return name;
  }
  for (const fs::path& folder : pluginFolders()) {
    if (fs::path file = folder / (name + extension); fs::exists(file, unknown)) return file;
  }
  const std::vector<std::string> known = installedPlugins();
  throw Failure(fmt::format("{}: no such plug-in ({})", name,
                            known.empty() ? "none is installed; name the file of yours"
                                          : fmt::format("installed are {}", fmt::join(known, ", "))));
}

std::vector<std::string> installedPlugins() {
  std::set<std::string> names;
  for (const fs::path& folder : pluginFolders()) {
    std::error_code unknown;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, unknown)) {
      if (entry.path().extension() == extension) names.insert(entry.path().stem().string());
    }
  }
  return {names.begin(), names.end()};
}

}  // namespace velt::tool
