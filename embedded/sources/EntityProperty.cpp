#include "embedded/sources/EntityProperty.h"

#include <cmath>

#include "embedded/automation/model/Guard.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/Entity.h"
#include "embedded/database/Layer.h"
#include "holders/VariantHolder.h"
#include "host/com/SafeArray.h"

namespace velt::sources {
namespace {

using automation::guarded;
using automation::Refusal;

HRESULT giveText(const std::wstring& text, BSTR* out) {
  BSTR const copy = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  if (copy == nullptr) return E_OUTOFMEMORY;
  *out = copy;
  return S_OK;
}

AskedEntity requiredEntity(IDispatch* automationObject) {
  const std::optional<AskedEntity> entity = entityBehind(automationObject);
  if (!entity) throw Refusal(E_INVALIDARG, L"The object stands for no entity of an open drawing.");
  return *entity;
}

// Callers may pass a reference to the VARIANT that holds the value, but no reference to such a reference.
const VARIANT& unwrapped(const VARIANT& value) {
  const bool isWrapped = value.vt == (VT_BYREF | VT_VARIANT) && value.pvarVal != nullptr;
  return isWrapped ? *value.pvarVal : value;
}

std::uint64_t hashOf(const std::wstring& text, std::uint64_t seed) {
  constexpr std::uint64_t prime = 0x100000001B3;
  for (const wchar_t character : text)
    seed = (seed ^ static_cast<std::uint64_t>(character)) * prime;
  return seed;
}

bool isNumber(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_I2:
    case VT_I4:
    case VT_I8:
    case VT_INT:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_UI8:
    case VT_UINT:
    case VT_R4:
    case VT_R8:
      return true;
    default:
      return false;
  }
}

}  // namespace

std::optional<AskedEntity> entityBehind(IUnknown* automationObject) {
  holders::InterfaceHolder<IVeltBaseObject> base;
  if (FAILED(holders::query(automationObject, IID_IVeltBaseObject, base))) return std::nullopt;
  VkDbObjectId id;
  if (FAILED(base->GetObjectId(&id))) return std::nullopt;
  const std::optional<database::ObjectRef> object = database::resolve(id);
  if (!object) return std::nullopt;
  return AskedEntity{id, *object};
}

EntityProperty::EntityProperty(Description description)
    : ComObject(platform::Ledger::account("host property")), description_(std::move(description)) {}

HRESULT EntityProperty::GetGUID(GUID* guid) {
  if (guid == nullptr) return E_POINTER;
  constexpr std::uint64_t basis = 0xCBF29CE484222325;
  const std::uint64_t first = hashOf(description_.name, hashOf(description_.heading, basis));
  const std::uint64_t second = hashOf(description_.heading, first + description_.type);
  GUID made{static_cast<std::uint32_t>(first),
            static_cast<std::uint16_t>(first >> 32),
            static_cast<std::uint16_t>(first >> 48),
            {}};
  for (unsigned i = 0; i < sizeof(made.Data4); ++i)
    made.Data4[i] = static_cast<std::uint8_t>(second >> (8 * i));
  *guid = made;
  return S_OK;
}

HRESULT EntityProperty::GetDisplayName(BSTR* name) {
  return name == nullptr ? E_POINTER : giveText(description_.name, name);
}

HRESULT EntityProperty::IsPropertyEnabled(IDispatch* entity, BOOL* enabled) {
  if (enabled == nullptr) return E_POINTER;
  return guarded([&] {
    const std::optional<AskedEntity> asked = entityBehind(entity);
    *enabled = asked && has(*asked) ? 1 : 0;
    return S_OK;
  });
}

HRESULT EntityProperty::IsPropertyReadOnly(BOOL* readOnly) {
  if (readOnly == nullptr) return E_POINTER;
  *readOnly = description_.isReadOnly ? 1 : 0;
  return S_OK;
}

HRESULT EntityProperty::GetDescription(BSTR* description) {
  return description == nullptr ? E_POINTER : giveText(description_.help, description);
}

HRESULT EntityProperty::GetCurrentValueName(BSTR* typeName) {
  return typeName == nullptr ? E_POINTER : E_NOTIMPL;
}

HRESULT EntityProperty::GetCurrentValueType(VARTYPE* type) {
  if (type == nullptr) return E_POINTER;
  *type = description_.type;
  return S_OK;
}

HRESULT EntityProperty::GetCurrentValueData(IDispatch* entity, VARIANT* value) {
  if (value == nullptr) return E_POINTER;
  return guarded([&] {
    const AskedEntity asked = requiredEntity(entity);
    if (!has(asked)) return E_INVALIDARG;
    *value = read(asked);
    return S_OK;
  });
}

HRESULT EntityProperty::SetCurrentValueData(IDispatch* entity, VARIANT value) {
  return guarded([&] {
    const AskedEntity asked = requiredEntity(entity);
    if (!has(asked)) return E_INVALIDARG;
    if (description_.isReadOnly) return E_ACCESSDENIED;
    requireUnlockedLayer(*asked.object.drawing, asked.object.record);
    asked.object.drawing->atomically([&] {
      write(asked, unwrapped(value));
      holders::VariantHolder got;
      *got.put() = read(asked);
      if (!isSame(asked, unwrapped(value), got.get()))
        throw Refusal(E_FAIL, L"The drawing would give back another value.");
    });
    return S_OK;
  });
}

bool EntityProperty::isSame(const AskedEntity&, const VARIANT& put, const VARIANT& got) const {
  if (got.vt == VT_BSTR) return textIn(put) == textIn(got);
  return !isNumber(got.vt) || realIn(put) == realIn(got);
}

HRESULT EntityProperty::MapPropertyToCategory(DISPID, PROPCAT* category) {
  if (category == nullptr) return E_POINTER;
  *category = description_.category;
  return S_OK;
}

HRESULT EntityProperty::GetCategoryName(PROPCAT category, LCID, BSTR* name) {
  if (name == nullptr) return E_POINTER;
  return category == description_.category ? giveText(description_.heading, name) : E_INVALIDARG;
}

std::wstring textIn(const VARIANT& value) {
  if (value.vt != VT_BSTR) throw Refusal(DISP_E_TYPEMISMATCH, L"The value must be a text.");
  return value.bstrVal == nullptr ? std::wstring() : std::wstring(value.bstrVal, SysStringLen(value.bstrVal));
}

double realIn(const VARIANT& value) {
  if (!isNumber(value.vt)) throw Refusal(DISP_E_TYPEMISMATCH, L"The value must be a number.");
  holders::VariantHolder real;
  const bool isConverted = holders::handedOver(VariantChangeType(real.put(), &value, 0, VT_R8), real);
  if (!isConverted || !std::isfinite(real.get().dblVal))
    throw Refusal(DISP_E_OVERFLOW, L"The value must be a finite number.");
  return real.get().dblVal;
}

std::int64_t integerIn(const VARIANT& value, std::int64_t lowest, std::int64_t highest) {
  const double real = realIn(value);
  if (std::trunc(real) < real || std::trunc(real) > real)
    throw Refusal(DISP_E_TYPEMISMATCH, L"The value must be a whole number.");
  if (real < static_cast<double>(lowest) || real > static_cast<double>(highest))
    throw Refusal(DISP_E_OVERFLOW, L"The number is too large for this value.");
  return static_cast<std::int64_t>(real);
}

VARIANT textVariant(const std::wstring& text) {
  VARIANT variant{};
  if (FAILED(giveText(text, &variant.bstrVal))) throw Refusal(E_OUTOFMEMORY, L"There is not enough memory.");
  variant.vt = VT_BSTR;
  return variant;
}

void requireUnlockedLayer(const database::Drawing& drawing, std::uint32_t record) {
  const database::TableEntry* const layer = database::Entity(drawing, record).layer();
  if (layer != nullptr && database::Layer(drawing, layer->record).isLocked())
    throw Refusal(E_ACCESSDENIED, L"The layer is locked.");
}

HRESULT givePropertyArray(std::span<IDynamicProperty2* const> properties, VARIANT* out) {
  holders::VariantHolder array;
  if (!properties.empty()) {
    SAFEARRAY* const made = SafeArrayCreateVector(VT_UNKNOWN, 0, static_cast<ULONG>(properties.size()));
    if (made == nullptr) return E_OUTOFMEMORY;
    array.put()->vt = VT_ARRAY | VT_UNKNOWN;
    array.get().parray = made;
    LONG index = 0;
    for (IDynamicProperty2* const property : properties) {
      const HRESULT result = SafeArrayPutElement(made, &index, static_cast<IUnknown*>(property));
      if (FAILED(result)) return result;
      ++index;
    }
  }
  *out = array.detach();
  return S_OK;
}

}  // namespace velt::sources
