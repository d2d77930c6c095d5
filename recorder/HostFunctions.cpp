// The functions of COM and of the platform, in the place of the host's. Those that only move memory (heap, strings that
// are freed, task memory, lists of strings, colors) are not here: the layer calls the host's.

#include "host/automation/TqAutoCreateInstance.h"
#include "host/com/ComRuntime.h"
#include "host/com/OleSafeArray.h"
#include "host/com/StringArray.h"
#include "host/platform/CrashRecorder.h"
#include "host/platform/Resources.h"
#include "recorder/Call.h"
#include "recorder/Next.h"

using namespace velt::recorder;

namespace {

// Hosts call strings, values and arrays themselves, where they end a list or copy a text for the layer.
#define VELT_CALLED_BY_LAYER (side() == Side::layer && isOfTheLayer(__builtin_return_address(0)))

// A function that works on memory of its caller: in a replay it is done again, unless it failed.
template <class Work>
HRESULT performHere(bool isCalledByLayer, const char* name, Work work) {
  if (!isCalledByLayer) return work();
  const auto recorded = perform<HRESULT>(name, 0, work);
  if (!session().isReplay() || FAILED(recorded)) return recorded;
  const Turn turn(Side::host);
  return work();
}

// The same for one that throws its failures.
template <class Work>
void performThrowing(const char* name, Work work) {
  if (side() != Side::layer) return work();
  perform<void>(name, 0, work);
  if (!session().isReplay()) return;
  const Turn turn(Side::host);
  work();
}

// A module is a number, in a replay too.
struct Module {
  HMODULE handle = nullptr;
};

void setModule(const json& from, HMODULE& module) {
  const auto number = from.get<std::uint64_t>();
  module = number != 0 ? new char() : nullptr;
  if (module != nullptr) setNumber(module, number);
}

template <class Work, class... Inputs>
HMODULE loadedModule(const char* name, Work work, Inputs... inputs) {
  if (side() != Side::layer) return work();
  HMODULE module = nullptr;
  perform<void>(
      name, 0, [&] { module = work(); }, inputs...,
      Special(
          "module", [&](bool) { return json(numberOf(module)); },
          [&](const json& from) { setModule(from, module); }));
  return module;
}

// The host's crash recorder, of which the layer calls the third entry.
class OurCrashRecorder final : public VeltCrashRecorder {
 public:
  VeltCrashRecorder* real = nullptr;

  void addNote(const wchar_t* note) override {
    if (real != nullptr) real->addNote(note);
  }
  void flush() override {
    if (real != nullptr) real->flush();
  }
  void report(const TqErrorStatus* error) override {
    if (side() != Side::layer) {
      if (real != nullptr) real->report(error);
      return;
    }
    const Velt::ErrorStatus status = error->status();
    perform<void>(
        "VeltCrashRecorder::report", 0, [&] { real->report(error); }, In("status", status));
  }
};

}  // namespace

extern "C" {

HRESULT CoInitialize(void* reserved) {
  static auto* const host = next<HRESULT(void*)>("CoInitialize");
  if (side() != Side::layer) return host(reserved);
  return perform<HRESULT>("CoInitialize", 0, [&] { return host(reserved); });
}

void CoUninitialize() {
  static auto* const host = next<void()>("CoUninitialize");
  if (side() != Side::layer) return host();
  perform<void>("CoUninitialize", 0, [&] { host(); });
}

LANGID GetUserDefaultLangID() {
  static auto* const host = next<LANGID()>("GetUserDefaultLangID");
  if (side() != Side::layer) return host();
  return perform<LANGID>("GetUserDefaultLangID", 0, [&] { return host(); });
}

LCID GetUserDefaultLCID() {
  static auto* const host = next<LCID()>("GetUserDefaultLCID");
  if (side() != Side::layer) return host();
  return perform<LCID>("GetUserDefaultLCID", 0, [&] { return host(); });
}

BSTR SysAllocString(const OLECHAR* text) {
  static auto* const host = next<BSTR(const OLECHAR*)>("SysAllocString");
  if (!VELT_CALLED_BY_LAYER) return host(text);
  BSTR made = nullptr;
  const auto allocated = perform<bool>("SysAllocString", 0, [&] { return (made = host(text)) != nullptr; });
  if (!session().isReplay() || !allocated) return made;
  const Turn turn(Side::host);
  return host(text);
}

HRESULT VariantClear(VARIANT* variant) {
  static auto* const host = next<HRESULT(VARIANT*)>("VariantClear");
  return performHere(VELT_CALLED_BY_LAYER, "VariantClear", [&] { return host(variant); });
}

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) {
  static auto* const host = next<HRESULT(SAFEARRAY*, VARTYPE*)>("SafeArrayGetVartype");
  return performHere(VELT_CALLED_BY_LAYER, "SafeArrayGetVartype", [&] { return host(array, type); });
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  static auto* const host = next<HRESULT(SAFEARRAY*, UINT, LONG*)>("SafeArrayGetLBound");
  return performHere(VELT_CALLED_BY_LAYER, "SafeArrayGetLBound",
                     [&] { return host(array, dimension, bound); });
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  static auto* const host = next<HRESULT(SAFEARRAY*, UINT, LONG*)>("SafeArrayGetUBound");
  return performHere(VELT_CALLED_BY_LAYER, "SafeArrayGetUBound",
                     [&] { return host(array, dimension, bound); });
}

// Arrays hold objects of ours already (wrapContent), so what comes out is ours.
HRESULT SafeArrayGetElement(SAFEARRAY* array, const LONG* indices, void* element) {
  static auto* const host = next<HRESULT(SAFEARRAY*, const LONG*, void*)>("SafeArrayGetElement");
  return performHere(VELT_CALLED_BY_LAYER, "SafeArrayGetElement",
                     [&] { return host(array, indices, element); });
}

HRESULT TqAutoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid, void** object) {
  static auto* const host = next<HRESULT(REFCLSID, IUnknown*, DWORD, REFIID, void**)>("TqAutoCreateInstance");
  if (side() != Side::layer) return host(clsid, outer, context, iid, object);
  // The layer asks for IUnknown.
  return perform<HRESULT>(
      "TqAutoCreateInstance", 0, [&] { return host(clsid, outer, context, iid, object); }, In("clsid", clsid),
      In("iid", iid), Out("object", reinterpret_cast<IUnknown**>(object)));
}

HMODULE LoadLibraryExW(const wchar_t* name, HANDLE file, DWORD flags) {
  static auto* const host = next<HMODULE(const wchar_t*, HANDLE, DWORD)>("LoadLibraryExW");
  const json written = textJson(name);
  return loadedModule(
      "LoadLibraryExW", [&] { return host(name, file, flags); }, In("name", written));
}

HMODULE loadResourceDll(const wchar_t* name) {
  static auto* const host = next<HMODULE(const wchar_t*)>("loadResourceDll");
  const json written = textJson(name);
  return loadedModule(
      "loadResourceDll", [&] { return host(name); }, In("name", written));
}

INT LoadStringW(HMODULE module, UINT id, wchar_t* buffer, INT characters) {
  static auto* const host = next<INT(HMODULE, UINT, wchar_t*, INT)>("LoadStringW");
  if (side() != Side::layer) return host(module, id, buffer, characters);
  const std::uint64_t number = numberOf(module);
  const auto room = static_cast<std::size_t>(characters > 0 ? characters : 0);
  return perform<INT>(
      "LoadStringW", 0, [&] { return host(module, id, buffer, characters); }, In("module", number),
      In("id", id), In("characters", characters),
      // The layer takes what stands in the buffer.
      Special(
          "string", [&](bool) { return textJson(buffer, wcsnlen(buffer, room)); },
          [&](const json& from) {
            const std::wstring text = textFrom(from).substr(0, room);
            std::wmemcpy(buffer, text.c_str(), text.size() + 1);
          }));
}

}  // extern "C"

void COleSafeArray::CreateOneDim(VARTYPE type, DWORD elements, const void* source, LONG lowerBound) {
  static auto* const host = next<void(COleSafeArray*, VARTYPE, DWORD, const void*, LONG)>(
      "_ZN13COleSafeArray12CreateOneDimEtjPKvi");
  performThrowing("COleSafeArray::CreateOneDim", [&] { host(this, type, elements, source, lowerBound); });
}

void COleSafeArray::PutElement(const LONG* index, void* element) {
  static auto* const host =
      next<void(COleSafeArray*, const LONG*, void*)>("_ZN13COleSafeArray10PutElementEPKiPv");
  performThrowing("COleSafeArray::PutElement", [&] { host(this, index, element); });
}

long CStringArray::Add(const wchar_t* text) {
  static auto* const host = next<long(CStringArray*, const wchar_t*)>("_ZN12CStringArray3AddEPKw");
  long index = 0;
  performThrowing("CStringArray::Add", [&] { index = host(this, text); });
  return index;
}

VeltCrashRecorder* veltGetCrashRecorder() {
  static auto* const host = next<VeltCrashRecorder*()>("_Z20veltGetCrashRecorderv");
  static auto& ours = *new OurCrashRecorder;
  if (side() != Side::layer) return host();
  const auto isThere =
      perform<bool>("veltGetCrashRecorder", 0, [&] { return (ours.real = host()) != nullptr; });
  return isThere ? &ours : nullptr;
}
