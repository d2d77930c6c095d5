// Passes a copy of the host's table, as a plug-in would that keeps the table for later.

#include "tests/plugins/Parts.h"

using namespace velt::tests;

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  static ScriptedSource& source = *new ScriptedSource;
  const VeltPluginHost copy = *host;
  copy.report(&copy, L"a message into nothing");
  return copy.addPropertySource(&copy, L"Test.CopiesTable", L"VkDbLine", &source) == E_INVALIDARG
             ? veltPluginVersion
             : E_UNEXPECTED;
}
