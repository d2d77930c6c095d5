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
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "embedded/sources/PluginProperty.h"

namespace {

using velt::plugins::idOf;

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

std::vector<std::wstring> materialNames() {
  std::vector<std::wstring> names;
  for (const Material& material : materials)
    names.emplace_back(material.name);
  return names;
}

// --- entities -----------------------------------------------------------------------------------------------------------

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

class MaterialProperty final : public velt::plugins::Property {
 public:
  MaterialProperty()
      : Property({.id = {0x3D9A1F40, 0x5C27, 0x4E8B, {0x91, 0x6D, 0x22, 0xA4, 0x7B, 0x10, 0xC5, 0x01}},
                  .name = L"Material",
                  .description = L"What the entity is to be made of.",
                  .type = VT_I4,
                  .choices = materialNames(),
                  .category = materialCategory,
                  .categoryName = L"Material"}) {}

  bool isFor(IDispatch* entity) override { return !idOf(entity).isNull(); }
  HRESULT get(IDispatch* entity, VARIANT& value) override {
    const VkDbObjectId id = idOf(entity);
    if (id.isNull()) return E_INVALIDARG;
    value.vt = VT_I4;
    value.lVal = static_cast<LONG>(chosenMaterials().of(id));
    return S_OK;
  }
  HRESULT set(IDispatch* entity, const VARIANT& value) override {
    const VkDbObjectId id = idOf(entity);
    if (id.isNull()) return E_INVALIDARG;
    if (value.vt != VT_I4) return DISP_E_TYPEMISMATCH;
    if (!isChoice(value.lVal)) return E_INVALIDARG;
    chosenMaterials().choose(id, static_cast<std::size_t>(value.lVal));
    return S_OK;
  }
};

class PriceProperty final : public velt::plugins::Property {
 public:
  PriceProperty()
      : Property({.id = {0x3D9A1F41, 0x5C27, 0x4E8B, {0x91, 0x6D, 0x22, 0xA4, 0x7B, 0x10, 0xC5, 0x01}},
                  .name = L"Price",
                  .description = L"Area of the entity times the price of its material.",
                  .type = VT_R8,
                  .isReadOnly = true,
                  .category = materialCategory,
                  .categoryName = L"Material"}) {}

  // Only an entity with an area has a price.
  bool isFor(IDispatch* entity) override { return realOf(entity, L"Area").has_value(); }
  HRESULT get(IDispatch* entity, VARIANT& value) override {
    const std::optional<double> area = realOf(entity, L"Area");
    if (!area) return E_INVALIDARG;
    value.vt = VT_R8;
    value.dblVal = *area * materials[chosenMaterials().of(idOf(entity))].pricePerArea;
    return S_OK;
  }
};

}  // namespace

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  return velt::plugins::offer<velt::plugins::Property>(host, L"Sample.Material", L"VkDbEntity",
                                                       {new MaterialProperty, new PriceProperty});
}
