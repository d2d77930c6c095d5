#pragma once

// What a palette shows and sets of one selection, by the names of the rows.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/database/Drawing.h"
#include "embedded/sources/LoadedPlugins.h"
#include "palette/Palette.h"
#include "tests/embedded/database/Sample.h"
#include "tests/support/Places.h"

namespace velt::tests {

// The sample plug-in of that name, loaded for the length of a test. Its messages go into the list.
inline std::unique_ptr<sources::LoadedPlugins> loadSample(const std::string& name,
                                                          std::vector<std::string>& told) {
  auto plugins =
      std::make_unique<sources::LoadedPlugins>([&told](const std::string& line) { told.push_back(line); });
  EXPECT_TRUE(plugins->load(velt::tests::pluginFolder() / (name + ".so")));
  return plugins;
}

using Ids = std::vector<VkDbObjectId>;

class PaletteOf {
 public:
  explicit PaletteOf(const Ids& ids) : selection_(ids) { selection_.query(); }

  bool has(std::string_view name) const { return !palette::rowsNamed(selection_.rows(), name).empty(); }
  palette::Row row(std::string_view name) const { return selection_.row(name); }
  std::string text(std::string_view name) const { return row(name).text(); }
  // The rows stay as they are: ask a new palette.
  palette::Report set(std::string_view name, const palette::Value& value) {
    return selection_.write(row(name), value);
  }

 private:
  palette::Selection selection_;
};

}  // namespace velt::tests
