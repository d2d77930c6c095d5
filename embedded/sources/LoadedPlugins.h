#pragma once

// Loads plug-ins and offers their property sources for as long as it lives.
//
// Ownership: when it ends, the sources are taken out of the registry and released with the properties that they handed
// out, so it must outlive all rows that show them. The code of a plug-in stays in the process, since objects that it
// handed out may be released later. The listener is not called after the end.
// Failure: what goes wrong with a plug-in is told to the listener, with the plug-in's file name, and does not affect
// the other plug-ins (see Plugin.h, GuardedSource.h).
// Threads: one, the palette's.

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "embedded/sources/PluginReports.h"

namespace velt::sources {

class LoadedPlugins {
 public:
  explicit LoadedPlugins(PluginReports::Sink listener = PluginReports::standardError());
  ~LoadedPlugins();
  LoadedPlugins(const LoadedPlugins&) = delete;
  LoadedPlugins& operator=(const LoadedPlugins&) = delete;

  // Loads the shared object and lets it add its sources. False, after telling why, when the file is not a shared
  // object, has no entry point or another version, refuses, or is loaded already; nothing that it added stays then.
  bool load(const std::filesystem::path& file);

 private:
  struct Plugin {
    void* library;
    std::shared_ptr<PluginReports> reports;
    std::vector<std::wstring> sources;
  };

  PluginReports::Sink listener_;
  std::vector<Plugin> plugins_;
};

}  // namespace velt::sources
