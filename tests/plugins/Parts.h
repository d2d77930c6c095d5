#pragma once

// The parts of which the plug-ins of tests are made: sources and properties that do as they are told, well or badly. They
// count their references, and no release ends them.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "embedded/sources/Plugin.h"
#include "host/com/Bstr.h"
#include "host/com/Variant.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicEnumProperty.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IPropertySource.h"
#include "tests/support/Variants.h"

namespace velt::tests {

// Of the newer generation (Interface is IDynamicProperty2, Entity IDispatch*) or the older one (IDynamicProperty, long).
template <class Interface, class Entity, const IID& InterfaceId>
class ScriptedProperty final : public Interface, public IDynamicEnumProperty, public ICategorizeProperties {
 public:
  explicit ScriptedProperty(const wchar_t* propertyName) : name(propertyName) {}

  std::wstring name;
  VARTYPE declared = VT_BSTR;
  LONG choices = 0;
  long references = 0;
  // This one interface only: no choices and no category.
  bool isBare = false;
  std::function<HRESULT(BOOL*)> enabled = [](BOOL* out) { return *out = 1, S_OK; };
  std::function<HRESULT(BSTR*)> displayName = [this](BSTR* out) {
    return *out = SysAllocString(name.c_str()), S_OK;
  };
  std::function<HRESULT(VARIANT*)> value = [](VARIANT* out) {
    return *out = variants::ownedText(L"fine"), S_OK;
  };
  std::function<HRESULT(const VARIANT&)> set = [](const VARIANT&) { return S_OK; };
  // Called when a reference is added or given back, after it was counted.
  std::function<void()> added = [] {};
  std::function<void()> released = [] {};

  HRESULT QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (iid == IID_IUnknown || iid == InterfaceId) *object = static_cast<Interface*>(this);
    if (!isBare && iid == IID_IDynamicEnumProperty) *object = static_cast<IDynamicEnumProperty*>(this);
    if (!isBare && iid == IID_ICategorizeProperties) *object = static_cast<ICategorizeProperties*>(this);
    if (*object == nullptr) return E_NOINTERFACE;
    ++references;
    return S_OK;
  }
  ULONG AddRef() override { return ++references, added(), static_cast<ULONG>(references); }
  ULONG Release() override { return --references, released(), static_cast<ULONG>(references); }

  HRESULT GetGUID(GUID* guid) override { return *guid = GUID{7, 0, 0, {}}, S_OK; }
  HRESULT GetDisplayName(BSTR* out) override { return displayName(out); }
  HRESULT IsPropertyEnabled(Entity, BOOL* out) override { return enabled(out); }
  HRESULT IsPropertyReadOnly(BOOL* out) override { return *out = 0, S_OK; }
  HRESULT GetDescription(BSTR* out) override { return *out = SysAllocString(L"described"), S_OK; }
  HRESULT GetCurrentValueName(BSTR*) override { return E_NOTIMPL; }
  HRESULT GetCurrentValueType(VARTYPE* out) override { return *out = declared, S_OK; }
  HRESULT GetCurrentValueData(Entity, VARIANT* out) override { return value(out); }
  HRESULT SetCurrentValueData(Entity, VARIANT newValue) override { return set(newValue); }

  HRESULT GetNumPropertyValues(LONG* out) override { return *out = choices, S_OK; }
  HRESULT GetPropValueName(LONG, BSTR* out) override { return *out = SysAllocString(L"choice"), S_OK; }
  HRESULT GetPropValueData(LONG index, VARIANT* out) override { return *out = variants::i4(index), S_OK; }
  HRESULT MapPropertyToCategory(DISPID, PROPCAT* out) override { return *out = 900, S_OK; }
  HRESULT GetCategoryName(PROPCAT, LCID, BSTR* out) override { return *out = SysAllocString(L"Test"), S_OK; }
};

using NewerProperty = ScriptedProperty<IDynamicProperty2, IDispatch*, IID_IDynamicProperty2>;
using OlderProperty = ScriptedProperty<IDynamicProperty, long, IID_IDynamicProperty>;

// A null stays a null.
template <class Property>
IUnknown* unknown(Property& property) {
  IUnknown* found = nullptr;
  property.QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&found));
  property.Release();
  return found;
}

inline HRESULT giveArray(const std::vector<IUnknown*>& elements, VARIANT* out) {
  *out = variants::borrowed(SafeArrayCreateVector(VT_UNKNOWN, 0, static_cast<ULONG>(elements.size())));
  for (LONG index = 0; index < static_cast<LONG>(elements.size()); ++index)
    SafeArrayPutElement(out->parray, &index, elements[static_cast<std::size_t>(index)]);
  return S_OK;
}

class ScriptedSource final : public IPropertySource {
 public:
  long references = 0;
  std::function<HRESULT(VARIANT*)> properties = [](VARIANT*) { return S_OK; };
  std::function<void()> added = [] {};
  std::function<void()> released = [] {};

  HRESULT QueryInterface(REFIID iid, void** object) override {
    *object = iid == IID_IUnknown || iid == IID_IPropertySource ? this : nullptr;
    if (*object == nullptr) return E_NOINTERFACE;
    ++references;
    return S_OK;
  }
  ULONG AddRef() override { return ++references, added(), static_cast<ULONG>(references); }
  ULONG Release() override { return --references, released(), static_cast<ULONG>(references); }
  HRESULT GetProperties(IDispatch*, VARIANT* out) override { return properties(out); }
};

// A source that offers these, for all entities; both live as long as the process.
template <class... Properties>
HRESULT addSource(const VeltPluginHost* host, const wchar_t* name, Properties&... properties) {
  static auto& kept = *new std::vector<std::unique_ptr<ScriptedSource>>;
  ScriptedSource* const source = kept.emplace_back(std::make_unique<ScriptedSource>()).get();
  const std::vector<IUnknown*> elements{unknown(properties)...};
  source->properties = [elements](VARIANT* out) { return giveArray(elements, out); };
  return host->addPropertySource(host, name, L"VkDbEntity", source);
}

}  // namespace velt::tests
