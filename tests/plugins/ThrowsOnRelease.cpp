// Throws when a reference to its property, to its source or to an object in a value is given back.

#include <stdexcept>

#include "tests/plugins/Parts.h"

using namespace velt::tests;

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  const auto refuse = [] { throw std::runtime_error("\x1B[31mI am not done\x1B[0m"); };
  static NewerProperty& property = *new NewerProperty(L"Never let go");
  property.released = refuse;
  static NewerProperty& object = *new NewerProperty(L"With an object");
  object.declared = VT_UNKNOWN;
  object.value = [](VARIANT* out) {
    out->vt = VT_UNKNOWN;
    property.QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&out->punkVal));
    return S_OK;
  };
  static ScriptedSource& source = *new ScriptedSource;
  source.released = refuse;
  source.properties = [](VARIANT* out) {
    return giveArray({static_cast<IDynamicProperty2*>(&property), static_cast<IDynamicProperty2*>(&object)},
                     out);
  };
  if (FAILED(host->addPropertySource(host, L"Test.ThrowsOnRelease", L"VkDbEntity", &source)))
    return E_UNEXPECTED;
  return veltPluginVersion;
}
