#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <thread>

#include "tests/hostcheck/Stage.h"

namespace velt::hostcheck {
namespace {

using namespace velt::tests;

// What a broken function does instead of the host's own. Captures nothing, so it fits into the table.
class HostFunctions : public Stage {
 protected:
  // Only the functions: no entity is given.
  Names broken() const { return found({}); }
};

BSTR stringWithPrefix(const OLECHAR* text, std::uint32_t prefix, wchar_t end) {
  if (text == nullptr) return nullptr;
  const std::size_t length = std::wcslen(text);
  auto* const string = SysAllocStringLen(text, static_cast<UINT>(length));
  std::memcpy(reinterpret_cast<char*>(string) - sizeof prefix, &prefix, sizeof prefix);
  string[length] = end;
  return string;
}

std::uint32_t bytesOf(const OLECHAR* text) {
  return text != nullptr ? static_cast<std::uint32_t>(std::wcslen(text) * sizeof(OLECHAR)) : 0;
}

TqVectorBlock brokenBlock{1, 0, 0, 16, nullptr};

TEST_F(HostFunctions, OfTheToyHostKeepEverything) {
  EXPECT_EQ(broken(), Names{});
}

TEST_F(HostFunctions, AreFoundWhenTheLengthCountsCharacters) {
  functions.allocString = [](const OLECHAR* text) {
    return stringWithPrefix(text, bytesOf(text) / static_cast<std::uint32_t>(sizeof(OLECHAR)), L'\0');
  };
  EXPECT_EQ(broken(), Names{"string-length"});
}

TEST_F(HostFunctions, AreFoundWhenNoNulEndsAString) {
  // One string, which gets its end back before the toys read what they free.
  functions.allocString = [](const OLECHAR* text) {
    const bool isTheOne = text != nullptr && std::wcscmp(text, L"Length") == 0;
    return stringWithPrefix(text, bytesOf(text), isTheOne ? L'x' : L'\0');
  };
  functions.freeString = [](BSTR string) {
    if (string != nullptr && string[0] == L'L') string[std::wcslen(L"Length")] = L'\0';
    SysFreeString(string);
  };
  EXPECT_EQ(broken(), Names{"string-end"});
}

TEST_F(HostFunctions, AreFoundWhenNullIsAllocated) {
  functions.allocString = [](const OLECHAR* text) { return SysAllocString(text != nullptr ? text : L""); };
  EXPECT_EQ(broken(), Names{"string-null"});
}

TEST_F(HostFunctions, AreFoundWhenAnInitialisedValueKeepsItsType) {
  functions.initVariant = [](VARIANT*) {};
  EXPECT_EQ(broken(), Names{"value-init"});
}

TEST_F(HostFunctions, AreFoundWhenAClearedValueKeepsItsType) {
  functions.clearVariant = [](VARIANT* value) {
    const VARTYPE type = value->vt;
    const HRESULT result = VariantClear(value);
    value->vt = type;
    return result;
  };
  EXPECT_EQ(broken(), Names{"value-clear"});
}

TEST_F(HostFunctions, AreFoundWhenAClearedObjectIsNotReleased) {
  functions.clearVariant = [](VARIANT* value) {
    if (value->vt != VT_UNKNOWN) return VariantClear(value);
    value->vt = VT_EMPTY;
    return S_OK;
  };
  EXPECT_EQ(broken(), Names{"value-release"});
}

TEST_F(HostFunctions, AreFoundWhenAnObjectIsReleasedBeforeItsValueIsEmpty) {
  functions.clearVariant = [](VARIANT* value) {
    if (value->vt != VT_UNKNOWN) return VariantClear(value);
    value->punkVal->Release();
    value->vt = VT_EMPTY;
    return S_OK;
  };
  EXPECT_EQ(broken(), Names{"value-reentry"});
}

TEST_F(HostFunctions, AreFoundWhenAReferredObjectIsReleased) {
  functions.clearVariant = [](VARIANT* value) {
    if (value->vt == (VT_UNKNOWN | VT_BYREF)) (*static_cast<IUnknown**>(value->byref))->Release();
    return VariantClear(value);
  };
  EXPECT_EQ(broken(), Names{"value-by-reference"});
}

TEST_F(HostFunctions, AreFoundWhenTheUpperBoundIsTheNumberOfElements) {
  functions.arrayUpperBound = [](SAFEARRAY* array, UINT dimension, LONG* bound) {
    const HRESULT result = SafeArrayGetUBound(array, dimension, bound);
    ++*bound;
    return result;
  };
  EXPECT_EQ(broken(), Names{"array-bounds"});
}

TEST_F(HostFunctions, AreFoundWhenAnArrayDoesNotKnowItsType) {
  functions.arrayType = [](SAFEARRAY*, VARTYPE*) { return E_NOTIMPL; };
  EXPECT_EQ(broken(), Names{"array-type"});
}

TEST_F(HostFunctions, AreFoundWhenAnElementOutsideIsRead) {
  functions.arrayElement = [](SAFEARRAY* array, const LONG* index, void* element) {
    const LONG clamped = *index < 0 || *index > 1 ? 1 : *index;
    return SafeArrayGetElement(array, &clamped, element);
  };
  EXPECT_EQ(broken(), Names{"array-index"});
}

TEST_F(HostFunctions, AreFoundWhenAnElementComesWithoutAReference) {
  functions.arrayElement = [](SAFEARRAY* array, const LONG* index, void* element) {
    const HRESULT result = SafeArrayGetElement(array, index, element);
    if (SUCCEEDED(result)) (*static_cast<IUnknown**>(element))->Release();
    return result;
  };
  EXPECT_EQ(broken(), Names{"array-references"});
}

TEST_F(HostFunctions, AreFoundWhenAnArrayKeepsSilentOutsideOfItsBounds) {
  functions.putElement = [](COleSafeArray& array, const LONG* index, void* element) {
    if (*index == 0 || *index == 1) array.PutElement(index, element);
  };
  EXPECT_EQ(broken(), Names{"array-throws"});
}

TEST_F(HostFunctions, AreFoundWhenABlockIsNotAligned) {
  functions.allocate = [](std::size_t bytes) -> void* {
    return static_cast<char*>(std::malloc(bytes + 16)) + 4;
  };
  functions.free = [](void* block) {
    if (block != nullptr) std::free(static_cast<char*>(block) - 4);
  };
  EXPECT_EQ(broken(), Names{"heap"});
}

TEST_F(HostFunctions, AreFoundWhenTheHeapServesOneThreadOnly) {
  static const std::thread::id own = std::this_thread::get_id();
  functions.allocate = [](std::size_t bytes) -> void* {
    return std::this_thread::get_id() == own ? _tqMalloc(bytes) : nullptr;
  };
  EXPECT_EQ(broken(), Names{"heap-threads"});
}

TEST_F(HostFunctions, AreFoundWhenTheEmptyBlockGrowsByAnotherCount) {
  functions.emptyBlock = &brokenBlock;
  EXPECT_EQ(broken(), Names{"empty-block"});
}

TEST_F(HostFunctions, AreFoundWhenThereIsNoLibraryOfMessages) {
  functions.loadLibrary = [](const wchar_t*, HANDLE, DWORD) -> HMODULE { return nullptr; };
  EXPECT_EQ(broken(), Names{"message-library"});
}

TEST_F(HostFunctions, AreFoundWhenAMessageHasNoText) {
  functions.loadString = [](HMODULE module, UINT message, wchar_t* buffer, INT characters) {
    return message == 1011 ? 0 : LoadStringW(module, message, buffer, characters);
  };
  EXPECT_EQ(broken(), Names{"message-texts"});
}

TEST_F(HostFunctions, AreFoundWhenAMessageHasNoPlaceForTheName) {
  functions.loadString = [](HMODULE module, UINT message, wchar_t* buffer, INT characters) {
    return LoadStringW(module, message == 1019 ? 1018 : message, buffer, characters);
  };
  EXPECT_EQ(broken(), Names{"message-formats"});
}

TEST_F(HostFunctions, AreFoundWhenAMessageIsWrittenBeyondItsBuffer) {
  functions.loadString = [](HMODULE module, UINT message, wchar_t* buffer, INT characters) {
    return LoadStringW(module, message, buffer, characters + 1);
  };
  EXPECT_EQ(broken(), Names{"message-cut"});
}

TEST_F(HostFunctions, AreFoundWhenComStartsOnceOnly) {
  static int starts = 0;
  starts = 0;
  functions.startCom = [](void*) { return ++starts == 1 ? S_OK : E_UNEXPECTED; };
  functions.endCom = [] {};
  EXPECT_EQ(broken(), Names{"com-start"});
}

TEST_F(HostFunctions, AreFoundWhenAnErrorHasNoText) {
  functions.putElement = [](COleSafeArray& array, const LONG* index, void* element) {
    if (*index != 0 && *index != 1) throw _com_error(DISP_E_BADINDEX, L"");
    array.PutElement(index, element);
  };
  EXPECT_EQ(broken(), Names{"error-text"});
}

}  // namespace
}  // namespace velt::hostcheck
