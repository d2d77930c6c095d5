// Its answers are not what it declares, and methods fail; one property among them is good.

#include "tests/plugins/Parts.h"

using namespace velt;
using namespace velt::tests;

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  static ScriptedSource& fails = *new ScriptedSource;
  fails.properties = [](VARIANT*) { return E_FAIL; };
  static ScriptedSource& noArray = *new ScriptedSource;
  noArray.properties = [](VARIANT* out) { return *out = variants::ownedText(L"properties"), S_OK; };
  static ScriptedSource& noProperty = *new ScriptedSource;
  noProperty.properties = [](VARIANT* out) { return giveArray({&noArray, nullptr}, out); };

  static NewerProperty& wrongType = *new NewerProperty(L"Of a wrong type");
  wrongType.value = [](VARIANT* out) { return *out = variants::i4(5), S_OK; };
  static NewerProperty& good = *new NewerProperty(L"Good among liars");

  const bool added =
      SUCCEEDED(host->addPropertySource(host, L"Test.Lies.Fails", L"VkDbEntity", &fails))
      && SUCCEEDED(host->addPropertySource(host, L"Test.Lies.NoArray", L"VkDbEntity", &noArray))
      && SUCCEEDED(host->addPropertySource(host, L"Test.Lies.NoProperty", L"VkDbEntity", &noProperty))
      && SUCCEEDED(addSource(host, L"Test.Lies", wrongType, good));
  return added ? veltPluginVersion : E_UNEXPECTED;
}
