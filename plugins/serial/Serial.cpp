// A sample plug-in, older generation: every block reference gets a serial number.
//
// The older interface names an entity by its database id in old-id form instead of by its automation object. This property
// has no choices and no category, so the row stands under no heading. Numbers are given out in the order in which
// references are first shown, can be overwritten, and are kept in memory.

#include <atomic>
#include <map>
#include <mutex>
#include <string>

#include "embedded/sources/Plugin.h"
#include "host/com/Bstr.h"
#include "host/com/SafeArray.h"
#include "host/com/Variant.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IPropertySource.h"

namespace {

constexpr std::size_t longestNumber = 20;

HRESULT giveText(const wchar_t* text, BSTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = SysAllocString(text);
  return *out != nullptr ? S_OK : E_OUTOFMEMORY;
}

class SerialNumber final : public IDynamicProperty {
 public:
  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = iid == IID_IUnknown || iid == IID_IDynamicProperty ? this : nullptr;
    if (*object == nullptr) return E_NOINTERFACE;
    ++references_;
    return S_OK;
  }
  ULONG AddRef() override { return ++references_; }
  ULONG Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT GetGUID(GUID* guid) override {
    if (guid == nullptr) return E_POINTER;
    *guid = {0x6B2E7C90, 0x18D4, 0x4A3F, {0xB7, 0x05, 0x9E, 0x31, 0x4F, 0x62, 0x8D, 0x01}};
    return S_OK;
  }
  HRESULT GetDisplayName(BSTR* name) override { return giveText(L"Serial number", name); }
  HRESULT GetDescription(BSTR* text) override {
    return giveText(L"Tells references of a block apart.", text);
  }
  HRESULT IsPropertyEnabled(long oldId, BOOL* enabled) override {
    if (enabled == nullptr) return E_POINTER;
    *enabled = oldId != 0 ? 1 : 0;
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
    *type = VT_BSTR;
    return S_OK;
  }
  HRESULT GetCurrentValueData(long oldId, VARIANT* value) override {
    if (value == nullptr) return E_POINTER;
    BSTR text = nullptr;
    const HRESULT given = giveText(numberOf(oldId).c_str(), &text);
    if (FAILED(given)) return given;
    value->vt = VT_BSTR;
    value->bstrVal = text;
    return S_OK;
  }
  HRESULT SetCurrentValueData(long oldId, VARIANT value) override {
    if (oldId == 0) return E_INVALIDARG;
    if (value.vt != VT_BSTR) return DISP_E_TYPEMISMATCH;
    if (SysStringLen(value.bstrVal) > longestNumber) return E_INVALIDARG;
    const std::lock_guard lock(mutex_);
    numbers_[oldId] = value.bstrVal != nullptr ? value.bstrVal : L"";
    return S_OK;
  }

 private:
  ~SerialNumber() = default;

  std::wstring numberOf(long oldId) {
    const std::lock_guard lock(mutex_);
    const auto [number, isNew] = numbers_.try_emplace(oldId);
    if (isNew) number->second = L"S-" + std::to_wstring(++given_);
    return number->second;
  }

  std::atomic<ULONG> references_{1};
  // Different drawings may be shown by different threads.
  std::mutex mutex_;
  std::map<long, std::wstring> numbers_;
  unsigned given_ = 0;
};

// Hands out the same property object for every block reference (see Lifetime in docs/plugins.md).
class SerialSource final : public IPropertySource {
 public:
  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = iid == IID_IUnknown || iid == IID_IPropertySource ? this : nullptr;
    if (*object == nullptr) return E_NOINTERFACE;
    ++references_;
    return S_OK;
  }
  ULONG AddRef() override { return ++references_; }
  ULONG Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT GetProperties(IDispatch*, VARIANT* properties) override {
    if (properties == nullptr) return E_POINTER;
    SAFEARRAY* const array = SafeArrayCreateVector(VT_UNKNOWN, 0, 1);
    if (array == nullptr) return E_OUTOFMEMORY;
    const LONG index = 0;
    SafeArrayPutElement(array, &index, number_);
    properties->vt = VT_ARRAY | VT_UNKNOWN;
    properties->parray = array;
    return S_OK;
  }

 private:
  ~SerialSource() { number_->Release(); }

  std::atomic<ULONG> references_{1};
  SerialNumber* number_ = new SerialNumber;
};

}  // namespace

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  if (host->version < veltPluginVersion) return E_NOTIMPL;
  auto* const source = new SerialSource;
  const HRESULT added = host->addPropertySource(host, L"Sample.Serial", L"VkDbBlockReference", source);
  source->Release();
  return FAILED(added) ? added : veltPluginVersion;
}
