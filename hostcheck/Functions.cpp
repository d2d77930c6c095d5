// The host's free functions: strings, values, arrays, heap, messages, COM.

#include <array>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <initializer_list>
#include <string>
#include <thread>

#include "hostcheck/Checks.h"

namespace velt::hostcheck {

namespace {

std::string number(std::int64_t value) {
  return std::to_string(value);
}

// --- strings ----------------------------------------------------------------------------------------------------

void checkStrings(Findings& findings, const HostFunctions& host) {
  for (const wchar_t* text : {L"Length", L"", L"\u00D8 50 \U0001F4D0"}) {
    const std::size_t characters = std::wcslen(text);
    const auto length = static_cast<std::uint32_t>(characters * sizeof(OLECHAR));
    const BSTR string = host.allocString(text);
    findings.tries("string-length");
    if (string == nullptr) {
      findings.expect(false, "string-length", "SysAllocString answers a string, also for an empty text",
                      "null");
      continue;
    }
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<const char*>(string) - sizeof bytes, sizeof bytes);
    findings.expect(bytes == length, "string-length",
                    "32 bits before the characters hold the length in bytes, " + number(length),
                    number(bytes));
    findings.expect(string[characters] == L'\0', "string-end", "a NUL after the last character",
                    "another character");
    findings.expect(std::wmemcmp(string, text, characters) == 0, "string-length", "a copy of the text",
                    "other characters");
    host.freeString(string);
  }
  findings.tries("string-null");
  const BSTR ofNull = host.allocString(nullptr);
  findings.expect(ofNull == nullptr, "string-null", "SysAllocString(null) is null", "a string");
  host.freeString(ofNull);
  host.freeString(nullptr);
}

// --- values -----------------------------------------------------------------------------------------------------

// Counts its references, and lives on the stack.
struct Probe final : IUnknown {
  HRESULT QueryInterface(REFIID iid, void** object) override {
    *object = iid == IID_IUnknown ? this : nullptr;
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG AddRef() override { return static_cast<ULONG>(++references); }
  ULONG Release() override { return static_cast<ULONG>(--references); }

  int references = 1;
};

// Is told when it is released, and looks then at the value that holds it, as an object does that ends with its owner.
struct Curious final : IUnknown {
  explicit Curious(const VARIANT& owner) : value(owner) {}
  HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG AddRef() override { return 2; }
  ULONG Release() override {
    typeSeen = value.vt;
    return 1;
  }

  const VARIANT& value;
  VARTYPE typeSeen = VT_EMPTY;
};

VARIANT unset() {
  VARIANT value;
  std::memset(static_cast<void*>(&value), 0xA5, sizeof value);
  return value;
}

void checkCleared(Findings& findings, const HostFunctions& host, VARIANT value, const char* what) {
  findings.tries("value-clear");
  const HRESULT result = host.clearVariant(&value);
  findings.expect(SUCCEEDED(result) && value.vt == VT_EMPTY, "value-clear",
                  std::string("VariantClear makes ") + what + " VT_EMPTY",
                  hex(result) + " and the type " + number(value.vt));
}

void checkReleased(Findings& findings, const HostFunctions& host) {
  Probe probe;
  VARIANT value{};
  value.vt = VT_UNKNOWN;
  value.punkVal = &probe;
  probe.AddRef();
  checkCleared(findings, host, value, "an object");
  findings.expect(probe.references == 1, "value-release", "VariantClear releases an object once",
                  "it has " + number(probe.references) + " references instead of 1");

  findings.tries("value-reentry");
  Curious curious(value);
  value.vt = VT_UNKNOWN;
  value.punkVal = &curious;
  host.clearVariant(&value);
  findings.expect(curious.typeSeen == VT_EMPTY, "value-reentry",
                  "a value is VT_EMPTY already when VariantClear releases its object",
                  "it is of the type " + number(curious.typeSeen) + " still");
}

void checkValues(Findings& findings, const HostFunctions& host) {
  findings.tries("value-init");
  VARIANT value = unset();
  host.initVariant(&value);
  findings.expect(value.vt == VT_EMPTY, "value-init", "VariantInit makes any memory VT_EMPTY",
                  "the type " + number(value.vt));

  value = VARIANT{};
  checkCleared(findings, host, value, "nothing");
  value.vt = VT_R8;
  value.dblVal = 1.5;
  checkCleared(findings, host, value, "a number");
  value.vt = VT_BSTR;
  value.bstrVal = host.allocString(L"text");
  checkCleared(findings, host, value, "a text");

  checkReleased(findings, host);

  findings.tries("value-by-reference");
  Probe other;
  IUnknown* pointer = &other;
  value.vt = static_cast<VARTYPE>(VT_UNKNOWN | VT_BYREF);
  value.byref = &pointer;
  host.clearVariant(&value);
  findings.expect(other.references == 1, "value-by-reference",
                  "VariantClear leaves alone what a VT_BYREF value refers to", "it was released");
}

// --- arrays -----------------------------------------------------------------------------------------------------

void checkBounds(Findings& findings, const HostFunctions& host, SAFEARRAY* array) {
  findings.tries("array-bounds");
  LONG lower = -77;
  LONG upper = -77;
  const HRESULT ofLower = host.arrayLowerBound(array, 1, &lower);
  const HRESULT ofUpper = host.arrayUpperBound(array, 1, &upper);
  findings.expect(SUCCEEDED(ofLower) && SUCCEEDED(ofUpper) && lower == 0 && upper == 1, "array-bounds",
                  "two elements have the bounds 0 and 1", number(lower) + " and " + number(upper));
  findings.tries("array-type");
  VARTYPE type = VT_EMPTY;
  const HRESULT ofType = host.arrayType(array, &type);
  findings.expect(SUCCEEDED(ofType) && type == VT_UNKNOWN, "array-type",
                  "the type of the elements, VT_UNKNOWN", hex(ofType) + " and the type " + number(type));
}

void checkElements(Findings& findings, const HostFunctions& host, COleSafeArray& array, Probe& probe) {
  findings.tries("array-references");
  const LONG first = 0;
  host.putElement(array, &first, &probe);
  findings.expect(probe.references == 2, "array-references", "PutElement takes a reference of its own",
                  "the object has " + number(probe.references) + " instead of 2");
  IUnknown* element = nullptr;
  const HRESULT result = host.arrayElement(array.parray, &first, &element);
  findings.expect(
      SUCCEEDED(result) && element == &probe && probe.references == 3, "array-references",
      "SafeArrayGetElement answers the object with a reference for the caller",
      hex(result) + ", and the object has " + number(probe.references) + " references instead of 3");
  for (const LONG outside : {LONG{-1}, LONG{2}}) {
    findings.tries("array-index");
    IUnknown* left = &probe;
    const HRESULT refused = host.arrayElement(array.parray, &outside, &left);
    findings.expect(FAILED(refused) && left == &probe, "array-index",
                    "SafeArrayGetElement fails outside of the bounds, and leaves its output", hex(refused));
    findings.tries("array-throws");
    try {
      host.putElement(array, &outside, &probe);
      findings.expect(false, "array-throws", "PutElement throws _com_error outside of the bounds", "nothing");
    } catch (const _com_error& error) {
      const _bstr_t text = error.Description();
      findings.expect(*static_cast<const wchar_t*>(text) != L'\0', "error-text",
                      "a _com_error has a description", "none");
    } catch (...) {
      findings.expect(false, "array-throws", "PutElement throws _com_error outside of the bounds",
                      "another exception");
    }
  }
}

void checkArrays(Findings& findings, const HostFunctions& host) {
  Probe probe;
  {
    COleSafeArray array;
    try {
      array.CreateOneDim(VT_UNKNOWN, 2);
    } catch (const _com_error&) {
      for (const char* check :
           {"array-bounds", "array-type", "array-index", "array-references", "array-throws", "error-text"})
        findings.cannotTry(check, "the host makes no arrays, and so it has no property sources");
      return;
    }
    checkBounds(findings, host, array.parray);
    checkElements(findings, host, array, probe);
  }
  findings.expect(probe.references <= 2, "array-references", "an array that ends releases its objects",
                  "it keeps a reference");
}

// --- heap -------------------------------------------------------------------------------------------------------

void checkHeap(Findings& findings, const HostFunctions& host) {
  findings.tries("heap");
  constexpr std::size_t size = 1000;
  auto* const block = static_cast<unsigned char*>(host.allocate(size));
  findings.expect(block != nullptr, "heap", "_tqMalloc answers a block", "null");
  if (block != nullptr) {
    findings.expect(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t) == 0, "heap",
                    "a block is aligned for everything", "it is not");
    std::memset(block, 0x5A, size);
    host.free(block);
  }
  host.free(nullptr);

  findings.tries("heap-threads");
  // A list that was made here may end there, and the other way round.
  void* made = nullptr;
  std::thread([&] { made = host.allocate(size); }).join();
  findings.expect(made != nullptr, "heap-threads", "_tqMalloc answers on any thread", "null");
  std::thread([&] { host.free(host.allocate(size)); }).join();
  host.free(made);
}

void checkEmptyBlock(Findings& findings, const HostFunctions& host) {
  findings.tries("empty-block");
  const TqVectorBlock* const block = host.emptyBlock;
  if (!findings.expect(block != nullptr, "empty-block", "gpEmptyVectorData points to a block", "null"))
    return;
  findings.expect(block->logicalLength == 0 && block->physicalLength == 0, "empty-block", "its lengths are 0",
                  number(block->logicalLength) + " and " + number(block->physicalLength));
  findings.expect(block->growCount == 8, "empty-block", "its grow count is 8", number(block->growCount));
  findings.expect(block->refCount >= 1, "empty-block", "the host holds a reference of its own",
                  number(block->refCount) + " references");
}

// --- messages ---------------------------------------------------------------------------------------------------

// The messages of the layer; see errors/LoadErrString.h. Some are formats, with one place for a property's name.
constexpr std::array<UINT, 20> messageIds = {1001, 1002, 1003, 1004, 1005, 1006, 1007, 1008, 1009, 1010,
                                             1011, 1014, 1015, 1016, 1018, 1019, 1020, 1021, 1022, 1023};

bool isFormat(UINT id) {
  return id == 1010 || id == 1014 || id == 1019;
}

int placesIn(const std::wstring& text) {
  int places = 0;
  for (std::size_t at = text.find(L'%'); at != std::wstring::npos; at = text.find(L'%', at + 1))
    ++places;
  return places;
}

void checkMessages(Findings& findings, const HostFunctions& host) {
  findings.tries("message-library");
  const HMODULE library = host.loadLibrary(L"PropertyBarRes.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
  if (!findings.expect(library != nullptr, "message-library", "LoadLibraryExW opens \"PropertyBarRes.dll\"",
                       "null"))
    return;
  findings.tries("message-texts");
  for (const UINT id : messageIds) {
    std::array<wchar_t, 2052> buffer{};
    host.loadString(library, id, buffer.data(), 2047);
    const std::wstring text = buffer.data();
    if (!findings.expect(!text.empty(), "message-texts", "message " + number(id) + " has a text", "none"))
      continue;
    const int places = placesIn(text);
    const bool isRight = isFormat(id) ? places == 1 && text.find(L"%ls") != std::wstring::npos : places == 0;
    findings.expect(isRight, "message-formats",
                    "message " + number(id) + (isFormat(id) ? " has one %ls, and no other %" : " has no %"),
                    narrow(text.c_str()));
  }

  findings.tries("message-cut");
  constexpr wchar_t untouched = L'\u2588';
  std::array<wchar_t, 8> small;
  small.fill(untouched);
  host.loadString(library, 1002, small.data(), 3);
  findings.expect(small[3] == L'\0' && small[4] == untouched, "message-cut",
                  "LoadStringW writes as many characters as it is told, and a NUL", "more, or no NUL");
  small.fill(untouched);
  const INT missing = host.loadString(library, 64999, small.data(), 3);
  findings.expect(missing == 0 && small[0] == untouched, "message-cut",
                  "a string that does not exist leaves the buffer alone", number(missing) + " characters");
}

// --- COM --------------------------------------------------------------------------------------------------------

void checkCom(Findings& findings, const HostFunctions& host) {
  findings.tries("com-start");
  const HRESULT first = host.startCom(nullptr);
  const HRESULT second = host.startCom(nullptr);
  findings.expect(SUCCEEDED(first) && SUCCEEDED(second), "com-start", "CoInitialize succeeds each time",
                  hex(first) + " and " + hex(second));
  if (SUCCEEDED(second)) host.endCom();
  if (SUCCEEDED(first)) host.endCom();
}

}  // namespace

void checkFunctions(Findings& findings, const HostFunctions& host) {
  findings.about({});
  checkStrings(findings, host);
  checkValues(findings, host);
  checkArrays(findings, host);
  checkHeap(findings, host);
  checkEmptyBlock(findings, host);
  checkMessages(findings, host);
  checkCom(findings, host);
}

}  // namespace velt::hostcheck
