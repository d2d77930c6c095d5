#include "tests/support/Places.h"

namespace velt::tests {

std::filesystem::path sourceFolder() {
  return VELT_SOURCE_DIR;
}

std::filesystem::path buildFolder() {
  return VELT_BINARY_DIR;
}

std::filesystem::path pluginFolder() {
  return VELT_PLUGIN_DIR;
}

std::filesystem::path testPluginFolder() {
  return VELT_TEST_PLUGIN_DIR;
}

}  // namespace velt::tests
