// Compiled for another host.

#include "tests/plugins/Parts.h"

using namespace velt::tests;

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  static NewerProperty& property = *new NewerProperty(L"Wrong version");
  addSource(host, L"Test.WrongVersion", property);
  return veltPluginVersion + 1;
}
