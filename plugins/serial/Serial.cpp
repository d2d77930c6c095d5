// A sample plug-in, older generation: every block reference gets a serial number.
//
// The older interface names an entity by its database id in old-id form instead of by its automation object. This property
// has no choices and no category, so the row stands under no heading. Numbers are given out in the order in which
// references are first shown, can be overwritten, and are kept in memory.

#include <map>
#include <mutex>
#include <string>

#include "embedded/sources/PluginProperty.h"

namespace {

constexpr std::size_t longestNumber = 20;

class SerialNumber final : public velt::plugins::OlderProperty {
 public:
  SerialNumber()
      : OlderProperty({.id = {0x6B2E7C90, 0x18D4, 0x4A3F, {0xB7, 0x05, 0x9E, 0x31, 0x4F, 0x62, 0x8D, 0x01}},
                       .name = L"Serial number",
                       .description = L"Tells references of a block apart."}) {}

  bool isFor(long oldId) override { return oldId != 0; }
  HRESULT get(long oldId, VARIANT& value) override {
    BSTR text = nullptr;
    const HRESULT given = velt::plugins::giveText(numberOf(oldId), &text);
    if (FAILED(given)) return given;
    value.vt = VT_BSTR;
    value.bstrVal = text;
    return S_OK;
  }
  HRESULT set(long oldId, const VARIANT& value) override {
    if (oldId == 0) return E_INVALIDARG;
    if (value.vt != VT_BSTR) return DISP_E_TYPEMISMATCH;
    if (SysStringLen(value.bstrVal) > longestNumber) return E_INVALIDARG;
    const std::lock_guard lock(mutex_);
    numbers_[oldId] = value.bstrVal != nullptr ? value.bstrVal : L"";
    return S_OK;
  }

 private:
  std::wstring numberOf(long oldId) {
    const std::lock_guard lock(mutex_);
    const auto [number, isNew] = numbers_.try_emplace(oldId);
    if (isNew) number->second = L"S-" + std::to_wstring(++given_);
    return number->second;
  }

  // Different drawings may be shown by different threads.
  std::mutex mutex_;
  std::map<long, std::wstring> numbers_;
  unsigned given_ = 0;
};

}  // namespace

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
  return velt::plugins::offer(host, L"Sample.Serial", L"VkDbBlockReference", {new SerialNumber});
}
