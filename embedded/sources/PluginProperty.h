#pragma once

// Bases for the properties and sources of plug-ins: what each of them would write again.
//
//   class Price final : public velt::plugins::Property {
//    public:
//     Price() : Property({.id = {...}, .name = L"Price", .type = VT_R8, .isReadOnly = true}) {}
//     HRESULT get(IDispatch* entity, VARIANT& value) override { ... }
//   };
//
//   extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
//     return velt::plugins::offer(host, L"Example.Prices", L"VkDbEntity", {new Price});
//   }
//
// Everything here is compiled into the plug-in: no interface of the host depends on it, and a plug-in may answer the
// interfaces itself.
// Ownership: properties and sources count their references and end with the last one; they are made with new.
// Failure: null outputs and unknown indexes are answered with results; what an overridden method throws is passed on, and
// the host turns it into a failure.
// Threads: as for the plug-in (Plugin.h).

#include <atomic>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "embedded/sources/Plugin.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/com/Bstr.h"
#include "host/com/ComRuntime.h"
#include "host/com/IDispatch.h"
#include "host/com/SafeArray.h"
#include "host/com/Variant.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicEnumProperty.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IPropertySource.h"

namespace velt::plugins {

// What a property answers for every entity.
struct About {
  // Your own, so that nobody mistakes the property for another one.
  GUID id{};
  // The label of the row.
  std::wstring name{};
  std::wstring description{};
  // Of the values: VT_BSTR, VT_R8, VT_I4, VT_BOOL.
  VARTYPE type = VT_BSTR;
  bool isReadOnly = false;
  // The name of an editor, such as VELT_COLOR; empty for the usual one of the type.
  std::wstring typeName{};
  // Where the type is VT_I4: the names of the values 0, 1, 2, ... None for other properties.
  std::vector<std::wstring> choices{};
  // The heading over the row. Numbers of your own are positive; -32 to -1 are predefined, and need no name.
  PROPCAT category = 0;
  std::wstring categoryName{};
};

// A new string for the caller. E_POINTER for a null output.
inline HRESULT giveText(const std::wstring& text, BSTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return *out != nullptr ? S_OK : E_OUTOFMEMORY;
}

template <class Value>
HRESULT giveValue(Value value, Value* out) {
  if (out == nullptr) return E_POINTER;
  *out = value;
  return S_OK;
}

// The id of an automation object; null for one that has none.
inline VkDbObjectId idOf(IDispatch* entity) {
  VkDbObjectId id;
  void* found = nullptr;
  if (entity == nullptr || FAILED(entity->QueryInterface(IID_IVeltBaseObject, &found))) return id;
  auto* const object = static_cast<IVeltBaseObject*>(found);
  if (FAILED(object->GetObjectId(&id))) id = VkDbObjectId::kNull;
  object->Release();
  return id;
}

// The count of references to an object that was made with new.
class References {
 public:
  ULONG add() { return ++count_; }
  template <class Object>
  ULONG remove(Object* object) {
    const ULONG left = --count_;
    if (left == 0) delete object;
    return left;
  }

 private:
  std::atomic<ULONG> count_{1};
};

// A property of either generation: Generation is its interface, Entity how that names an entity. What a plug-in overrides
// stands first.
template <class Generation, class Entity, const IID& generationId>
class PropertyOf : public Generation, public IDynamicEnumProperty, public ICategorizeProperties {
 public:
  explicit PropertyOf(About about) : about_(std::move(about)) {}
  PropertyOf(const PropertyOf&) = delete;
  PropertyOf& operator=(const PropertyOf&) = delete;
  virtual ~PropertyOf() = default;

  // Whether the entity has the property.
  virtual bool isFor(Entity) { return true; }
  // The value is empty before, of the declared type after success, and then the caller's.
  virtual HRESULT get(Entity entity, VARIANT& value) = 0;
  // The value may be of any type, and stays the caller's.
  virtual HRESULT set(Entity, const VARIANT&) { return E_ACCESSDENIED; }

  // --- what the host calls ------------------------------------------------------------------------------------------

  // A property without choices, or without a category, does not have the interface for them.
  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (iid == IID_IUnknown || iid == generationId) *object = static_cast<Generation*>(this);
    if (iid == IID_IDynamicEnumProperty && !about_.choices.empty())
      *object = static_cast<IDynamicEnumProperty*>(this);
    if (iid == IID_ICategorizeProperties && about_.category != 0)
      *object = static_cast<ICategorizeProperties*>(this);
    if (*object == nullptr) return E_NOINTERFACE;
    references_.add();
    return S_OK;
  }
  ULONG AddRef() override { return references_.add(); }
  ULONG Release() override { return references_.remove(this); }

  HRESULT GetGUID(GUID* guid) override { return giveValue(about_.id, guid); }
  HRESULT GetDisplayName(BSTR* name) override { return giveText(about_.name, name); }
  HRESULT GetDescription(BSTR* text) override { return giveText(about_.description, text); }
  HRESULT IsPropertyEnabled(Entity entity, BOOL* enabled) override {
    return enabled == nullptr ? E_POINTER : giveValue(static_cast<BOOL>(isFor(entity) ? 1 : 0), enabled);
  }
  HRESULT IsPropertyReadOnly(BOOL* readOnly) override {
    return giveValue(static_cast<BOOL>(about_.isReadOnly ? 1 : 0), readOnly);
  }
  HRESULT GetCurrentValueName(BSTR* typeName) override {
    return about_.typeName.empty() ? E_NOTIMPL : giveText(about_.typeName, typeName);
  }
  HRESULT GetCurrentValueType(VARTYPE* type) override { return giveValue(about_.type, type); }
  HRESULT GetCurrentValueData(Entity entity, VARIANT* value) override {
    return value == nullptr ? E_POINTER : get(entity, *value);
  }
  HRESULT SetCurrentValueData(Entity entity, VARIANT value) override {
    return about_.isReadOnly ? E_ACCESSDENIED : set(entity, value);
  }

  HRESULT GetNumPropertyValues(LONG* count) override {
    return giveValue(static_cast<LONG>(about_.choices.size()), count);
  }
  HRESULT GetPropValueName(LONG index, BSTR* name) override {
    return isChoice(index) ? giveText(about_.choices[static_cast<std::size_t>(index)], name) : E_INVALIDARG;
  }
  HRESULT GetPropValueData(LONG index, VARIANT* value) override {
    if (value == nullptr) return E_POINTER;
    if (!isChoice(index)) return E_INVALIDARG;
    value->vt = VT_I4;
    value->lVal = index;
    return S_OK;
  }

  HRESULT MapPropertyToCategory(DISPID, PROPCAT* category) override {
    return giveValue(about_.category, category);
  }
  HRESULT GetCategoryName(PROPCAT category, LCID, BSTR* name) override {
    return category == about_.category ? giveText(about_.categoryName, name) : E_INVALIDARG;
  }

 protected:
  [[nodiscard]] const About& about() const { return about_; }
  // Whether a value of the property can be that number.
  [[nodiscard]] bool isChoice(LONG value) const {
    return value >= 0 && static_cast<std::size_t>(value) < about_.choices.size();
  }

 private:
  const About about_;
  References references_;
};

// The newer generation: a method is given the entity's automation object. For new work.
class Property : public PropertyOf<IDynamicProperty2, IDispatch*, IID_IDynamicProperty2> {
 public:
  using PropertyOf::PropertyOf;
};
// The older one: a method is given the database id in old-id form.
class OlderProperty : public PropertyOf<IDynamicProperty, long, IID_IDynamicProperty> {
 public:
  using PropertyOf::PropertyOf;
};

// A source that offers the same properties for every entity of its class; each property tells in isFor() whether an
// entity has it.
class Source final : public IPropertySource {
 public:
  // Takes the references to the properties over.
  explicit Source(std::vector<IUnknown*> properties) : properties_(std::move(properties)) {}
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;

  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = iid == IID_IUnknown || iid == IID_IPropertySource ? this : nullptr;
    if (*object == nullptr) return E_NOINTERFACE;
    references_.add();
    return S_OK;
  }
  ULONG AddRef() override { return references_.add(); }
  ULONG Release() override { return references_.remove(this); }

  HRESULT GetProperties(IDispatch*, VARIANT* properties) override {
    if (properties == nullptr) return E_POINTER;
    SAFEARRAY* const array = SafeArrayCreateVector(VT_UNKNOWN, 0, static_cast<ULONG>(properties_.size()));
    if (array == nullptr) return E_OUTOFMEMORY;
    for (std::size_t i = 0; i < properties_.size(); ++i) {
      const LONG index = static_cast<LONG>(i);
      SafeArrayPutElement(array, &index, properties_[i]);
    }
    properties->vt = VT_ARRAY | VT_UNKNOWN;
    properties->parray = array;
    return S_OK;
  }

 private:
  friend class References;
  ~Source() {
    for (IUnknown* const property : properties_)
      property->Release();
  }

  References references_;
  std::vector<IUnknown*> properties_;
};

// Offers new properties of one generation under that name for that class of entities, and answers what the entry point
// answers.
template <class AnyProperty>
std::int32_t offer(const VeltPluginHost* host, const wchar_t* name, const wchar_t* entityClass,
                   std::initializer_list<AnyProperty*> properties) {
  std::vector<IUnknown*> references;
  for (AnyProperty* const property : properties) {
    void* unknown = nullptr;
    property->QueryInterface(IID_IUnknown, &unknown);
    references.push_back(static_cast<IUnknown*>(unknown));
    property->Release();
  }
  auto* const source = new Source(std::move(references));
  const HRESULT added = host->version < veltPluginVersion
                            ? E_NOTIMPL
                            : host->addPropertySource(host, name, entityClass, source);
  source->Release();
  return FAILED(added) ? added : veltPluginVersion;
}

}  // namespace velt::plugins
