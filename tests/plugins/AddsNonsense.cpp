// Adds sources that cannot be offered, and one that can.

#include "tests/plugins/Parts.h"

using namespace velt::tests;

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  static NewerProperty& property = *new NewerProperty(L"Left over");
  static ScriptedSource& source = *new ScriptedSource;
  const bool allRefused =
      host->addPropertySource(host, nullptr, L"VkDbLine", &source) == E_POINTER
      && host->addPropertySource(host, L"Test.A", nullptr, &source) == E_POINTER
      && host->addPropertySource(host, L"Test.A", L"VkDbLine", nullptr) == E_POINTER
      && host->addPropertySource(host, L"", L"VkDbLine", &source) == E_INVALIDARG
      && host->addPropertySource(host, L"Test.A", L"Line", &source) == E_INVALIDARG
      && host->addPropertySource(host, L"Test.A", L"VkDbLayout", &source) == E_INVALIDARG
      && host->addPropertySource(host, L"Velt.ExtendedData", L"VkDbLine", &source) == E_ACCESSDENIED;
  if (!allRefused || FAILED(addSource(host, L"Test.AddsNonsense", property))) return E_UNEXPECTED;
  return veltPluginVersion;
}
