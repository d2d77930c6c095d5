// Finds that it cannot work, after it has added a source, and says so.

#include "tests/plugins/Parts.h"

using namespace velt::tests;

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  static NewerProperty& property = *new NewerProperty(L"Refused");
  addSource(host, L"Test.Refuses", property);
  host->report(host, L"no licence today");
  return E_ACCESSDENIED;
}
