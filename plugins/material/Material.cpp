// A sample plug-in, newer generation: every entity has a material, chosen from a list, and every entity with an area has
// a price.
//
// It shows a property that can be set (Material, with choices), a read-only one that is computed from another property
// of the entity (Price), a category of its own, and a source that offers both. The materials are kept in memory by the
// id of the entity, and are lost when the process ends.
//
// Lifetime: the source makes its two properties once and hands out the same ones for every entity; each method answers
// for the entity that it is given.

#include <array>
#include <atomic>
#include <map>
#include <mutex>
#include <optional>

#include "embedded/sources/Plugin.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/com/Bstr.h"
#include "host/com/ComRuntime.h"
#include "host/com/IDispatch.h"
#include "host/com/SafeArray.h"
#include "host/com/Variant.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicEnumProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IPropertySource.h"

namespace {

struct Material {
  const wchar_t* name;
  // For one square unit of the drawing.
  double pricePerArea;
};

// clang-format off
constexpr std::array materials{
    //       name        price
    Material{L"Concrete", 0.5},
    Material{L"Brick",    0.8},
    Material{L"Oak",      2.5},
    Material{L"Glass",    4.0},
};
// clang-format on

// A category of the plug-in's own, so positive: negative numbers are predefined.
constexpr PROPCAT materialCategory = 501;

HRESULT giveText(const wchar_t* text, BSTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = SysAllocString(text);
  return *out != nullptr ? S_OK : E_OUTOFMEMORY;
}

// --- entities -----------------------------------------------------------------------------------------------------------

VkDbObjectId idOf(IDispatch* entity) {
  VkDbObjectId id;
  void* found = nullptr;
  if (entity == nullptr || FAILED(entity->QueryInterface(velt::IID_IVeltBaseObject, &found))) return id;
  auto* const object = static_cast<IVeltBaseObject*>(found);
  if (FAILED(object->GetObjectId(&id))) id = VkDbObjectId::kNull;
  object->Release();
  return id;
}

// The value of a property of the entity. Nothing when the entity lacks the property or its value is not a real number.
std::optional<double> realOf(IDispatch* entity, const wchar_t* property) {
  if (entity == nullptr) return std::nullopt;
  auto* name = const_cast<wchar_t*>(property);
  DISPID dispId = 0;
  if (FAILED(entity->GetIDsOfNames(GUID_NULL, &name, 1, LOCALE_SYSTEM_DEFAULT, &dispId))) return std::nullopt;
  DISPPARAMS noArguments{};
  VARIANT value{};
  const HRESULT got = entity->Invoke(dispId, GUID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                     &noArguments, &value, nullptr, nullptr);
  const bool isReal = SUCCEEDED(got) && value.vt == VT_R8;
  const double real = isReal ? value.dblVal : 0.0;
  VariantClear(&value);
  return isReal ? std::optional(real) : std::nullopt;
}

// Locks, because different drawings may be shown by different threads.
class ChosenMaterials {
 public:
  std::size_t of(VkDbObjectId id) {
    const std::lock_guard lock(mutex_);
    const auto found = chosen_.find(id.asOldId());
    return found != chosen_.end() ? found->second : 0;
  }
  void choose(VkDbObjectId id, std::size_t material) {
    const std::lock_guard lock(mutex_);
    chosen_[id.asOldId()] = material;
  }

 private:
  std::mutex mutex_;
  std::map<long, std::size_t> chosen_;
};

ChosenMaterials& chosenMaterials() {
  static ChosenMaterials chosen;
  return chosen;
}

// --- properties ---------------------------------------------------------------------------------------------------------

// The count of references to an object, which ends with its last reference.
class References {
 public:
  ULONG add() { return ++count_; }
  ULONG remove() { return --count_; }

 private:
  std::atomic<ULONG> count_{1};
};

class MaterialProperty final : public IDynamicProperty2,
                               public IDynamicEnumProperty,
                               public ICategorizeProperties {
 public:
  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDynamicProperty2) *object = static_cast<IDynamicProperty2*>(this);
    if (iid == IID_IDynamicEnumProperty) *object = static_cast<IDynamicEnumProperty*>(this);
    if (iid == IID_ICategorizeProperties) *object = static_cast<ICategorizeProperties*>(this);
    if (*object == nullptr) return E_NOINTERFACE;
    references_.add();
    return S_OK;
  }
  ULONG AddRef() override { return references_.add(); }
  ULONG Release() override {
    const ULONG left = references_.remove();
    if (left == 0) delete this;
    return left;
  }

  HRESULT GetGUID(GUID* guid) override {
    if (guid == nullptr) return E_POINTER;
    *guid = {0x3D9A1F40, 0x5C27, 0x4E8B, {0x91, 0x6D, 0x22, 0xA4, 0x7B, 0x10, 0xC5, 0x01}};
    return S_OK;
  }
  HRESULT GetDisplayName(BSTR* name) override { return giveText(L"Material", name); }
  HRESULT GetDescription(BSTR* text) override { return giveText(L"What the entity is to be made of.", text); }
  HRESULT IsPropertyEnabled(IDispatch* entity, BOOL* enabled) override {
    if (enabled == nullptr) return E_POINTER;
    *enabled = idOf(entity).isNull() ? 0 : 1;
    return S_OK;
  }
  HRESULT IsPropertyReadOnly(BOOL* readOnly) override {
    if (readOnly == nullptr) return E_POINTER;
    *readOnly = 0;
    return S_OK;
  }
  // It has no custom type.
  HRESULT GetCurrentValueName(BSTR*) override { return E_NOTIMPL; }
  HRESULT GetCurrentValueType(VARTYPE* type) override {
    if (type == nullptr) return E_POINTER;
    *type = VT_I4;
    return S_OK;
  }
  HRESULT GetCurrentValueData(IDispatch* entity, VARIANT* value) override {
    if (value == nullptr) return E_POINTER;
    const VkDbObjectId id = idOf(entity);
    if (id.isNull()) return E_INVALIDARG;
    value->vt = VT_I4;
    value->lVal = static_cast<LONG>(chosenMaterials().of(id));
    return S_OK;
  }
  HRESULT SetCurrentValueData(IDispatch* entity, VARIANT value) override {
    const VkDbObjectId id = idOf(entity);
    if (id.isNull()) return E_INVALIDARG;
    if (value.vt != VT_I4) return DISP_E_TYPEMISMATCH;
    if (value.lVal < 0 || static_cast<std::size_t>(value.lVal) >= materials.size()) return E_INVALIDARG;
    chosenMaterials().choose(id, static_cast<std::size_t>(value.lVal));
    return S_OK;
  }

  HRESULT GetNumPropertyValues(LONG* count) override {
    if (count == nullptr) return E_POINTER;
    *count = static_cast<LONG>(materials.size());
    return S_OK;
  }
  HRESULT GetPropValueName(LONG index, BSTR* name) override {
    if (index < 0 || static_cast<std::size_t>(index) >= materials.size()) return E_INVALIDARG;
    return giveText(materials[static_cast<std::size_t>(index)].name, name);
  }
  HRESULT GetPropValueData(LONG index, VARIANT* value) override {
    if (value == nullptr) return E_POINTER;
    if (index < 0 || static_cast<std::size_t>(index) >= materials.size()) return E_INVALIDARG;
    value->vt = VT_I4;
    value->lVal = index;
    return S_OK;
  }

  HRESULT MapPropertyToCategory(DISPID, PROPCAT* category) override {
    if (category == nullptr) return E_POINTER;
    *category = materialCategory;
    return S_OK;
  }
  HRESULT GetCategoryName(PROPCAT category, LCID, BSTR* name) override {
    return category == materialCategory ? giveText(L"Material", name) : E_INVALIDARG;
  }

 private:
  ~MaterialProperty() = default;
  References references_;
};

class PriceProperty final : public IDynamicProperty2, public ICategorizeProperties {
 public:
  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDynamicProperty2) *object = static_cast<IDynamicProperty2*>(this);
    if (iid == IID_ICategorizeProperties) *object = static_cast<ICategorizeProperties*>(this);
    if (*object == nullptr) return E_NOINTERFACE;
    references_.add();
    return S_OK;
  }
  ULONG AddRef() override { return references_.add(); }
  ULONG Release() override {
    const ULONG left = references_.remove();
    if (left == 0) delete this;
    return left;
  }

  HRESULT GetGUID(GUID* guid) override {
    if (guid == nullptr) return E_POINTER;
    *guid = {0x3D9A1F41, 0x5C27, 0x4E8B, {0x91, 0x6D, 0x22, 0xA4, 0x7B, 0x10, 0xC5, 0x01}};
    return S_OK;
  }
  HRESULT GetDisplayName(BSTR* name) override { return giveText(L"Price", name); }
  HRESULT GetDescription(BSTR* text) override {
    return giveText(L"Area of the entity times the price of its material.", text);
  }
  // Only an entity with an area has a price.
  HRESULT IsPropertyEnabled(IDispatch* entity, BOOL* enabled) override {
    if (enabled == nullptr) return E_POINTER;
    *enabled = realOf(entity, L"Area") ? 1 : 0;
    return S_OK;
  }
  HRESULT IsPropertyReadOnly(BOOL* readOnly) override {
    if (readOnly == nullptr) return E_POINTER;
    *readOnly = 1;
    return S_OK;
  }
  HRESULT GetCurrentValueName(BSTR*) override { return E_NOTIMPL; }
  HRESULT GetCurrentValueType(VARTYPE* type) override {
    if (type == nullptr) return E_POINTER;
    *type = VT_R8;
    return S_OK;
  }
  HRESULT GetCurrentValueData(IDispatch* entity, VARIANT* value) override {
    if (value == nullptr) return E_POINTER;
    const std::optional<double> area = realOf(entity, L"Area");
    if (!area) return E_INVALIDARG;
    value->vt = VT_R8;
    value->dblVal = *area * materials[chosenMaterials().of(idOf(entity))].pricePerArea;
    return S_OK;
  }
  HRESULT SetCurrentValueData(IDispatch*, VARIANT) override { return E_ACCESSDENIED; }

  HRESULT MapPropertyToCategory(DISPID, PROPCAT* category) override {
    if (category == nullptr) return E_POINTER;
    *category = materialCategory;
    return S_OK;
  }
  HRESULT GetCategoryName(PROPCAT category, LCID, BSTR* name) override {
    return category == materialCategory ? giveText(L"Material", name) : E_INVALIDARG;
  }

 private:
  ~PriceProperty() = default;
  References references_;
};

// --- the source ---------------------------------------------------------------------------------------------------------

class MaterialSource final : public IPropertySource {
 public:
  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = iid == IID_IUnknown || iid == IID_IPropertySource ? this : nullptr;
    if (*object == nullptr) return E_NOINTERFACE;
    references_.add();
    return S_OK;
  }
  ULONG AddRef() override { return references_.add(); }
  ULONG Release() override {
    const ULONG left = references_.remove();
    if (left == 0) delete this;
    return left;
  }

  // Both properties for every entity: each one tells in IsPropertyEnabled whether an entity has it.
  HRESULT GetProperties(IDispatch*, VARIANT* properties) override {
    if (properties == nullptr) return E_POINTER;
    IUnknown* const list[] = {static_cast<IDynamicProperty2*>(material_),
                              static_cast<IDynamicProperty2*>(price_)};
    SAFEARRAY* const array = SafeArrayCreateVector(VT_UNKNOWN, 0, static_cast<ULONG>(std::size(list)));
    if (array == nullptr) return E_OUTOFMEMORY;
    for (LONG index = 0; index < static_cast<LONG>(std::size(list)); ++index)
      SafeArrayPutElement(array, &index, list[index]);
    properties->vt = VT_ARRAY | VT_UNKNOWN;
    properties->parray = array;
    return S_OK;
  }

 private:
  ~MaterialSource() {
    material_->Release();
    price_->Release();
  }

  References references_;
  MaterialProperty* material_ = new MaterialProperty;
  PriceProperty* price_ = new PriceProperty;
};

}  // namespace

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  if (host->version < veltPluginVersion) return E_NOTIMPL;
  auto* const source = new MaterialSource;
  const HRESULT added = host->addPropertySource(host, L"Sample.Material", L"VkDbEntity", source);
  source->Release();
  return FAILED(added) ? added : veltPluginVersion;
}
