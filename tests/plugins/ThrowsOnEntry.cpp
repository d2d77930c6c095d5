// Throws out of its entry point, after it has added a source.

#include <stdexcept>

#include "tests/plugins/Parts.h"

using namespace velt::tests;

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  static NewerProperty& property = *new NewerProperty(L"Thrown");
  addSource(host, L"Test.ThrowsOnEntry", property);
  throw std::runtime_error("no settings found");
}
