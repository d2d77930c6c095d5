// host/platform: the heap, the block of empty vectors, the crash recorder, and the texts of messages.

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <iterator>

#include "host/platform/CrashRecorder.h"
#include "host/platform/Memory.h"
#include "host/platform/Resources.h"
#include "host/platform/VectorBlock.h"

// Lists are made here, handed to the layer, and freed there, or the other way round: so both use these two.
void* _tqMalloc(std::size_t bytes) { return std::malloc(bytes); }
void _tqFree(void* block) { std::free(block); }

// All empty vectors share this block. Its first reference is ours, so that it is never freed; 8 is by how much a vector
// grows. constinit: vectors of static objects use it before main begins.
static constinit TqVectorBlock emptyBlock{1, 0, 0, 8, nullptr};
constinit TqVectorBlock* gpEmptyVectorData = &emptyBlock;

// A host without a crash recorder says so with null. The layer makes its reports all the same.
VeltCrashRecorder* veltGetCrashRecorder() { return nullptr; }
TqErrorStatus::TqErrorStatus(Velt::ErrorStatus status) : status_(status) {}
TqErrorStatus::~TqErrorStatus() = default;
Velt::ErrorStatus TqErrorStatus::status() const { return status_; }

namespace {

struct Message {
  UINT id;
  const wchar_t* text;
};

// What users read when something fails. "%ls" is where the layer puts the name of the property.
// clang-format off
constexpr Message messages[] = {
    // id   text
    {1001, L"COM could not be started."},
    {1002, L"The part has no automation object."},
    {1003, L"The part has no IDispatch."},
    {1004, L"The part has no IVeltBaseObject."},
    {1005, L"The part has no type information."},
    {1006, L"The type information of the part is null."},
    {1007, L"The type information has no attributes."},
    {1008, L"A function of the type information cannot be read."},
    {1009, L"The name of a function cannot be read."},
    {1010, L"The part does not know its own property %ls."},
    {1011, L"The part has no IOPMPropertyExtension."},
    {1014, L"The elements of a property cannot be reached. (%ls)"},
    {1015, L"The elements of a property have no names."},
    {1016, L"An element of a property has no value."},
    {1018, L"The part offers no choices."},
    {1019, L"The part has no property %ls."},
    {1020, L"The part has no categories."},
    {1021, L"A property has no category."},
    {1022, L"The category of a property has no name."},
    {1023, L"Other"},
};
// clang-format on

// Any address will do as a handle, as long as LoadStringW knows it again.
HMODULE loadedLibrary(const wchar_t* name) {
  return std::wcscmp(name, L"PropertyBarRes.dll") == 0 ? const_cast<Message*>(messages) : nullptr;
}

}  // namespace

HMODULE LoadLibraryExW(const wchar_t* name, HANDLE, DWORD) { return loadedLibrary(name); }
// That of category names is not there: all categories are the parts' own (see Automation.cpp).
HMODULE loadResourceDll(const wchar_t* name) { return loadedLibrary(name); }

INT LoadStringW(HMODULE module, UINT id, wchar_t* buffer, INT characters) {
  if (module != messages) return 0;
  const Message* const found =
      std::find_if(std::begin(messages), std::end(messages), [id](const Message& m) { return m.id == id; });
  if (found == std::end(messages)) return 0;
  buffer[characters] = L'\0';  // there is room for it besides
  std::wcsncpy(buffer, found->text, static_cast<std::size_t>(characters));
  return static_cast<INT>(std::wcslen(buffer));
}
