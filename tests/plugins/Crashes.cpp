// Crashes when its property is asked for its value.

#include <csignal>

#include "tests/plugins/Parts.h"

using namespace velt::tests;

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  static NewerProperty& crashing = *new NewerProperty(L"Crashing");
  crashing.value = [](VARIANT*) -> HRESULT { return std::raise(SIGSEGV), S_OK; };
  const HRESULT added = addSource(host, L"Test.Crashes", crashing);
  return FAILED(added) ? added : veltPluginVersion;
}
