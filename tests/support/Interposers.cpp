// Functions of the host that a test executable defines in their place: they log the call, obey the script of
// the current ToyHost, and else forward to the embedded host. Executables export them, so that the layer and
// the embedded host call them too (a VariantClear of a string is followed by its SysFreeString in the log).
//
// Calls of functions that can fail take part in the countdown of ToyHost::failCall; the resource and locale
// functions and the frees obey rules only.

#include "tests/support/Interposers.h"

#include <dlfcn.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <list>

#include "host/automation/TqAutoCreateInstance.h"
#include "host/com/Variant.h"
#include "host/platform/Resources.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/ToyDatabase.h"
#include "tests/support/ToyObject.h"

using namespace velt::toys;

namespace {

// The embedded host's own function of that (mangled) name.
template <class Function>
Function* real(const char* symbol) {
  void* const address = dlsym(RTLD_NEXT, symbol);
  if (address == nullptr) {
    std::fprintf(stderr, "the embedded host has no %s\n", symbol);
    std::abort();
  }
  return reinterpret_cast<Function*>(address);
}

// The beginning of every function here. What it does for itself is nothing that a test watches.
#define VELT_REAL(Signature, symbol)        \
  const velt::tests::AllocationPause pause; \
  static auto* const forward = real<Signature>(symbol)

// Where the caller's own allocations are watched all the same.
#define VELT_UNWATCHED_REAL(Signature, symbol) static auto* const forward = unwatchedReal<Signature>(symbol)

template <class Function>
Function* unwatchedReal(const char* symbol) {
  const velt::tests::AllocationPause pause;
  return real<Function>(symbol);
}

template <class Block>
Block* noteMade(const char* account, Block* made, void (*end)(void*)) {
  ToyHost* const host = ToyHost::current();
  if (host != nullptr && made != nullptr) host->noteMade(account, made, end);
  return made;
}

// What a failing call left in an output was not handed over.
bool wasLeft(const std::string& line, const void* block) {
  const ToyHost* const host = ToyHost::current();
  return host != nullptr && host->wasLeft(line, block);
}

void freeTaskMemory(void* block) {
  CoTaskMemFree(block);
}

void freeString(void* string) {
  SysFreeString(static_cast<BSTR>(string));
}

// References in it were taken back by the count already, and what they point to may be gone.
void destroyArray(void* memory) {
  auto* const array = static_cast<SAFEARRAY*>(memory);
  if ((array->fFeatures & (FADF_UNKNOWN | FADF_DISPATCH)) != 0 && array->pvData != nullptr) {
    std::size_t bytes = array->cbElements;
    for (UINT dimension = 0; dimension < SafeArrayGetDim(array); ++dimension)
      bytes *= array->rgsabound[dimension].cElements;
    std::memset(array->pvData, 0, bytes);
  }
  SafeArrayDestroy(array);
}

HRESULT perform(const std::string& line, const std::function<HRESULT()>& work,
                const ToyHost::Action& answerNull = {}) {
  ToyHost* const host = ToyHost::current();
  return host != nullptr ? host->perform(line, work, answerNull) : work();
}

bool allows(const std::string& line) {
  ToyHost* const host = ToyHost::current();
  return host == nullptr || host->allows(line);
}

void note(const std::string& line) {
  if (ToyHost* const host = ToyHost::current()) host->log.add(line);
}

// Handles of libraries without a file. They live as long as the process, because the layer keeps one.
struct ToyLibrary {
  std::wstring name;
};

std::list<ToyLibrary>& toyLibraries() {
  static std::list<ToyLibrary> libraries;
  return libraries;
}

HMODULE toyLibrary(const wchar_t* name) {
  for (ToyLibrary& library : toyLibraries()) {
    if (library.name == name) return &library;
  }
  return &toyLibraries().emplace_back(ToyLibrary{name});
}

const ToyLibrary* asToyLibrary(HMODULE module) {
  for (const ToyLibrary& library : toyLibraries()) {
    if (&library == module) return &library;
  }
  return nullptr;
}

INT loadToyString(const ToyLibrary& library, UINT id, wchar_t* buffer, INT characters) {
  std::wstring text = library.name + L":" + std::to_wstring(id);
  if (const ToyHost* const host = ToyHost::current()) {
    if (host->missingTexts.contains(id)) return 0;
    const auto found = host->texts.find(id);
    if (found != host->texts.end()) text = found->second;
  }
  text.resize(std::min(text.size(), static_cast<std::size_t>(characters)));
  std::copy_n(text.c_str(), text.size() + 1, buffer);
  return static_cast<INT>(text.size());
}

ToyDbObject* toyById(VkDbObjectId id) {
  ToyHost* const host = ToyHost::current();
  if (host == nullptr) return nullptr;
  const auto found = host->database.find(id.asOldId());
  return found == host->database.end() ? nullptr : found->second;
}

template <class Toy>
Toy* toyOf(const VkDbObject* object) {
  ToyHost* const host = ToyHost::current();
  if (host == nullptr) return nullptr;
  for (const auto& [id, toy] : host->database) {
    if (toy->object() == object) return dynamic_cast<Toy*>(toy);
  }
  return nullptr;
}

// Opens a toy, or forwards. Statuses take the place of HRESULTs in the script: what fails is not eOk.
template <class Object, class Forward>
Velt::ErrorStatus open(const char* function, Object*& object, VkDbObjectId id, VkDb::OpenMode mode,
                       bool erased, const VkRxClass* wanted, const Forward& forward) {
  Velt::ErrorStatus status = Velt::eOk;
  object = nullptr;
  const HRESULT result = perform(
      say(function, "(", id.asOldId(), ", mode ", static_cast<int>(mode), erased ? ", erased" : "", ")"),
      [&] {
        ToyDbObject* const toy = toyById(id);
        if (toy == nullptr) {
          status = forward();
        } else if (!toy->opensAsAnything && !toy->object()->isKindOf(wanted)) {
          status = Velt::eNotThatKindOfClass;
        } else {
          ++toy->opened;
          object = static_cast<Object*>(toy->object());
        }
        return S_OK;
      });
  return FAILED(result) ? Velt::eInvalidObjectId : status;
}

}  // namespace

namespace velt::toys {
void useInterposers() {}
}  // namespace velt::toys

// --- COM ------------------------------------------------------------------------------------------------------

extern "C" {

HRESULT CoInitialize(void* reserved) {
  VELT_REAL(HRESULT(void*), "CoInitialize");
  return perform(say("CoInitialize(", reserved == nullptr ? "null" : "reserved", ")"),
                 [&] { return forward(reserved); });
}

void CoUninitialize() {
  VELT_REAL(void(), "CoUninitialize");
  note("CoUninitialize()");
  forward();
}

void* CoTaskMemAlloc(std::size_t bytes) {
  VELT_UNWATCHED_REAL(void*(std::size_t), "CoTaskMemAlloc");
  return noteMade("task memory", forward(bytes), &freeTaskMemory);
}

void CoTaskMemFree(void* block) {
  VELT_REAL(void(void*), "CoTaskMemFree");
  const std::string line = block == nullptr ? "CoTaskMemFree(null)" : "CoTaskMemFree()";
  note(line);
  if (!wasLeft(line, block)) forward(block);
}

BSTR SysAllocString(const OLECHAR* text) {
  VELT_UNWATCHED_REAL(BSTR(const OLECHAR*), "SysAllocString");
  return noteMade("BSTR", forward(text), &freeString);
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT characters) {
  VELT_UNWATCHED_REAL(BSTR(const OLECHAR*, UINT), "SysAllocStringLen");
  return noteMade("BSTR", forward(text, characters), &freeString);
}

void SysFreeString(BSTR string) {
  VELT_REAL(void(BSTR), "SysFreeString");
  const std::string line = "SysFreeString(" + narrow(string) + ")";
  note(line);
  if (!wasLeft(line, string)) forward(string);
}

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, const SAFEARRAYBOUND* bounds) {
  VELT_UNWATCHED_REAL(SAFEARRAY * (VARTYPE, UINT, const SAFEARRAYBOUND*), "SafeArrayCreate");
  return noteMade("SAFEARRAY", forward(type, dimensions, bounds), &destroyArray);
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count) {
  VELT_UNWATCHED_REAL(SAFEARRAY * (VARTYPE, LONG, ULONG), "SafeArrayCreateVector");
  return noteMade("SAFEARRAY", forward(type, lowerBound, count), &destroyArray);
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
  VELT_REAL(HRESULT(SAFEARRAY*), "SafeArrayDestroy");
  return wasLeft("SafeArrayDestroy()", array) ? E_UNEXPECTED : forward(array);
}

HRESULT VariantClear(VARIANT* variant) {
  VELT_REAL(HRESULT(VARIANT*), "VariantClear");
  note(variant == nullptr ? "VariantClear(null)" : "VariantClear(" + print(*variant) + ")");
  return forward(variant);
}

LANGID GetUserDefaultLangID() {
  VELT_REAL(LANGID(), "GetUserDefaultLangID");
  note("GetUserDefaultLangID()");
  const ToyHost* const host = ToyHost::current();
  return host != nullptr && host->userLanguage.has_value() ? *host->userLanguage : forward();
}

LCID GetUserDefaultLCID() {
  VELT_REAL(LCID(), "GetUserDefaultLCID");
  note("GetUserDefaultLCID()");
  const ToyHost* const host = ToyHost::current();
  return host != nullptr && host->userLocale.has_value() ? *host->userLocale : forward();
}

HRESULT TqAutoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid, void** object) {
  VELT_REAL(HRESULT(REFCLSID, IUnknown*, DWORD, REFIID, void**), "TqAutoCreateInstance");
  return perform(
      say("TqAutoCreateInstance(", nameOf(clsid), ", ", outer == nullptr ? "no outer" : "outer", ", context ",
          context, ", ", nameOf(iid), ")"),
      [&] {
        ToyHost* const host = ToyHost::current();
        if (host == nullptr || !host->createInstance) return forward(clsid, outer, context, iid, object);
        *object = nullptr;
        ToyObject* const made = host->createInstance(clsid);
        if (made == nullptr) return REGDB_E_CLASSNOTREG;
        *object = made->referenced(iid);
        return S_OK;
      },
      [&] { *object = nullptr; });
}

// --- resources ------------------------------------------------------------------------------------------------

HMODULE LoadLibraryExW(const wchar_t* name, HANDLE file, DWORD flags) {
  VELT_REAL(HMODULE(const wchar_t*, HANDLE, DWORD), "LoadLibraryExW");
  if (!allows(say("LoadLibraryExW(", narrow(name), file == nullptr ? ", no file" : ", file", ", flags ",
                  flags, ")"))) {
    return nullptr;
  }
  const ToyHost* const host = ToyHost::current();
  return host != nullptr && host->toyLibraries ? toyLibrary(name) : forward(name, file, flags);
}

HMODULE loadResourceDll(const wchar_t* name) {
  VELT_REAL(HMODULE(const wchar_t*), "loadResourceDll");
  if (!allows("loadResourceDll(" + narrow(name) + ")")) return nullptr;
  const ToyHost* const host = ToyHost::current();
  return host != nullptr && host->toyLibraries ? toyLibrary(name) : forward(name);
}

INT LoadStringW(HMODULE module, UINT id, wchar_t* buffer, INT characters) {
  VELT_REAL(INT(HMODULE, UINT, wchar_t*, INT), "LoadStringW");
  const ToyLibrary* const library = asToyLibrary(module);
  const std::string from = module == nullptr    ? "null"
                           : library != nullptr ? narrow(library->name)
                                                : "library";
  if (!allows(say("LoadStringW(", from, ", ", id, ", ", characters, ")"))) return 0;
  return library != nullptr ? loadToyString(*library, id, buffer, characters)
                            : forward(module, id, buffer, characters);
}

}  // extern "C"

VeltCrashRecorder* veltGetCrashRecorder() {
  VELT_REAL(VeltCrashRecorder * (), "_Z20veltGetCrashRecorderv");
  if (!allows("veltGetCrashRecorder()")) return nullptr;
  const ToyHost* const host = ToyHost::current();
  return host != nullptr && host->crashRecorder.has_value() ? *host->crashRecorder : forward();
}

// --- colors --------------------------------------------------------------------------------------------------

namespace {

void noteColor(const std::string& line) {
  const ToyHost* const host = ToyHost::current();
  if (host != nullptr && host->logsColors) note(line);
}

}  // namespace

void VkCmColor::setColor(std::uint32_t value) {
  VELT_REAL(void(VkCmColor*, std::uint32_t), "_ZN9VkCmColor8setColorEj");
  noteColor("setColor(" + hex(value) + ")");
  forward(this, value);
}

void VkCmColor::setNames(const wchar_t* colorName, const wchar_t* bookName) {
  VELT_REAL(void(VkCmColor*, const wchar_t*, const wchar_t*), "_ZN9VkCmColor8setNamesEPKwS1_");
  noteColor("setNames(" + narrow(colorName) + ", " + narrow(bookName) + ")");
  forward(this, colorName, bookName);
}

// --- database -------------------------------------------------------------------------------------------------

Velt::ErrorStatus vkdbOpenVkDbObject(VkDbObject*& object, VkDbObjectId id, VkDb::OpenMode mode,
                                     bool openErased) {
  VELT_REAL(Velt::ErrorStatus(VkDbObject*&, VkDbObjectId, VkDb::OpenMode, bool),
            "_Z18vkdbOpenVkDbObjectRP10VkDbObject12VkDbObjectIdN4VkDb8OpenModeEb");
  return open("vkdbOpenVkDbObject", object, id, mode, openErased, VkDbObject::desc(),
              [&] { return forward(object, id, mode, openErased); });
}

Velt::ErrorStatus vkdbOpenVkDbEntity(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode,
                                     bool openErased) {
  VELT_REAL(Velt::ErrorStatus(VkDbEntity*&, VkDbObjectId, VkDb::OpenMode, bool),
            "_Z18vkdbOpenVkDbEntityRP10VkDbEntity12VkDbObjectIdN4VkDb8OpenModeEb");
  return open("vkdbOpenVkDbEntity", entity, id, mode, openErased, VkDbEntity::desc(),
              [&] { return forward(entity, id, mode, openErased); });
}

Velt::ErrorStatus vkdbOpenObject(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode) {
  VELT_REAL(Velt::ErrorStatus(VkDbEntity*&, VkDbObjectId, VkDb::OpenMode),
            "_Z14vkdbOpenObjectRP10VkDbEntity12VkDbObjectIdN4VkDb8OpenModeE");
  return open("vkdbOpenObject", entity, id, mode, false, VkDbEntity::desc(),
              [&] { return forward(entity, id, mode); });
}

Velt::ErrorStatus VkDbObject::close() {
  VELT_REAL(Velt::ErrorStatus(VkDbObject*), "_ZN10VkDbObject5closeEv");
  ToyDbObject* const toy = toyOf<ToyDbObject>(this);
  if (toy == nullptr) {
    note("close()");
    return forward(this);
  }
  note("close() on " + toy->name());
  --toy->opened;
  return Velt::eOk;
}

VkDbObjectId VkDbObject::objectId() const {
  VELT_REAL(VkDbObjectId(const VkDbObject*), "_ZNK10VkDbObject8objectIdEv");
  const ToyDbObject* const toy = toyOf<ToyDbObject>(this);
  return toy != nullptr ? toy->objectId() : forward(this);
}

VkDbObjectId VkDbEntity::layerId() const {
  VELT_REAL(VkDbObjectId(const VkDbEntity*), "_ZNK10VkDbEntity7layerIdEv");
  if (const auto* const entity = toyOf<ToyEntity>(this)) {
    note("layerId() on " + entity->name());
    return entity->layer;
  }
  if (const auto* const reference = toyOf<ToyBlockReference>(this)) {
    note("layerId() on " + reference->name());
    return reference->layer;
  }
  return forward(this);
}

VkDbObjectId VkDbBlockReference::blockTableRecord() const {
  VELT_REAL(VkDbObjectId(const VkDbBlockReference*), "_ZNK18VkDbBlockReference16blockTableRecordEv");
  const auto* const toy = toyOf<ToyBlockReference>(this);
  if (toy == nullptr) return forward(this);
  note("blockTableRecord() on " + toy->name());
  return toy->block;
}

VkCmColor VkDbLayerTableRecord::color() const {
  VELT_REAL(VkCmColor(const VkDbLayerTableRecord*), "_ZNK20VkDbLayerTableRecord5colorEv");
  const auto* const toy = toyOf<ToyLayer>(this);
  if (toy == nullptr) return forward(this);
  note("color() on " + toy->name());
  return toy->shown;
}

bool VkDbLayerTableRecord::isLocked() const {
  VELT_REAL(bool(const VkDbLayerTableRecord*), "_ZNK20VkDbLayerTableRecord8isLockedEv");
  const auto* const toy = toyOf<ToyLayer>(this);
  if (toy == nullptr) return forward(this);
  note("isLocked() on " + toy->name());
  return toy->locked;
}

VkDbObjectId vkdbGetEnhancedBlkOriginalBtrId(const VkDbBlockReference* reference) {
  VELT_REAL(VkDbObjectId(const VkDbBlockReference*),
            "_Z31vkdbGetEnhancedBlkOriginalBtrIdPK18VkDbBlockReference");
  const auto* const toy = toyOf<ToyBlockReference>(reference);
  if (reference == nullptr) note("vkdbGetEnhancedBlkOriginalBtrId(null)");
  if (toy == nullptr) return forward(reference);
  note("vkdbGetEnhancedBlkOriginalBtrId(" + toy->name() + ")");
  return toy->original;
}

bool vkdbIsEnhancedBlockRef(const VkDbBlockReference* reference) {
  VELT_REAL(bool(const VkDbBlockReference*), "_Z22vkdbIsEnhancedBlockRefPK18VkDbBlockReference");
  const auto* const toy = toyOf<ToyBlockReference>(reference);
  if (toy == nullptr) return forward(reference);
  note("vkdbIsEnhancedBlockRef(" + toy->name() + ")");
  return toy->enhanced;
}
