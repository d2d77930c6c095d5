// Throws from a source, and from properties of another one that also offers a good one.

#include <stdexcept>

#include "host/com/ComError.h"
#include "tests/plugins/Parts.h"

using namespace velt::tests;

namespace {

struct Strange {};

}  // namespace

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  static ScriptedSource& source = *new ScriptedSource;
  source.properties = [](VARIANT*) -> HRESULT { throw std::runtime_error("the database is down"); };
  static NewerProperty& noValue = *new NewerProperty(L"Without a value");
  noValue.value = [](VARIANT*) -> HRESULT { _com_raise_error(E_FAIL, L"no value here"); };
  static NewerProperty& noFlag = *new NewerProperty(L"Never seen");
  noFlag.enabled = [](BOOL*) -> HRESULT { throw Strange{}; };
  static OlderProperty& older = *new OlderProperty(L"Older without a value");
  older.value = noValue.value;
  static NewerProperty& good = *new NewerProperty(L"Good among throwers");
  const HRESULT added = host->addPropertySource(host, L"Test.Throws.Source", L"VkDbEntity", &source);
  if (FAILED(added) || FAILED(addSource(host, L"Test.Throws.Properties", noValue, noFlag, older, good)))
    return E_UNEXPECTED;
  return veltPluginVersion;
}
