// Does everything right: a row of each generation for every entity.

#include "tests/plugins/Parts.h"

using namespace velt::tests;

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  static NewerProperty& newer = *new NewerProperty(L"Good newer");
  static OlderProperty& older = *new OlderProperty(L"Good older");
  const HRESULT added = addSource(host, L"Test.Good", newer, older);
  return FAILED(added) ? added : veltPluginVersion;
}
