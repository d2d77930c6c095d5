// host/com: strings, values, arrays and the one exception. None of it knows of parts: a program with a COM runtime of its
// own only hands on to that.

#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "host/com/ComError.h"
#include "host/com/ComRuntime.h"
#include "host/com/IUnknown.h"
#include "host/com/OleSafeArray.h"
#include "host/com/StringArray.h"

// --- the runtime -------------------------------------------------------------------------------------------------------
HRESULT CoInitialize(void*) { return S_OK; }
void CoUninitialize() {}
void* CoTaskMemAlloc(std::size_t bytes) { return std::malloc(bytes); }
void CoTaskMemFree(void* block) { std::free(block); }
LANGID GetUserDefaultLangID() { return 0x0409; }
LCID GetUserDefaultLCID() { return 0x0409; }

// --- strings -----------------------------------------------------------------------------------------------------------
// A length in bytes, the characters, a NUL; the pointer that everybody has is that to the characters.
BSTR SysAllocString(const OLECHAR* text) {
  if (text == nullptr) return nullptr;
  const std::size_t bytes = std::wcslen(text) * sizeof(OLECHAR);
  auto* const block = static_cast<UINT*>(std::malloc(sizeof(UINT) + bytes + sizeof(OLECHAR)));
  if (block == nullptr) return nullptr;
  *block = static_cast<UINT>(bytes);
  return static_cast<BSTR>(std::memcpy(block + 1, text, bytes + sizeof(OLECHAR)));
}

void SysFreeString(BSTR string) {
  if (string != nullptr) std::free(reinterpret_cast<UINT*>(string) - 1);
}

// --- values ------------------------------------------------------------------------------------------------------------
void VariantInit(VARIANT* variant) { variant->vt = VT_EMPTY; }

HRESULT VariantClear(VARIANT* variant) {
  const VARIANT held = *variant;
  // Empty before something is released: an object may end with it, and look at this value again.
  variant->vt = VT_EMPTY;
  if (held.vt == VT_BSTR) SysFreeString(held.bstrVal);
  if ((held.vt == VT_DISPATCH || held.vt == VT_UNKNOWN) && held.punkVal != nullptr) held.punkVal->Release();
  return S_OK;
}

// --- arrays ------------------------------------------------------------------------------------------------------------
// Property sources answer with arrays. This host has no sources, so nobody ever makes an array, and each of these says
// so. A host that takes plug-ins needs arrays of strings and of objects.
HRESULT SafeArrayGetVartype(SAFEARRAY*, VARTYPE*) { return E_NOTIMPL; }
HRESULT SafeArrayGetLBound(SAFEARRAY*, UINT, LONG*) { return E_NOTIMPL; }
HRESULT SafeArrayGetUBound(SAFEARRAY*, UINT, LONG*) { return E_NOTIMPL; }
HRESULT SafeArrayGetElement(SAFEARRAY*, const LONG*, void*) { return E_NOTIMPL; }
COleSafeArray::COleSafeArray() : VARIANT{} {}
COleSafeArray::~COleSafeArray() = default;
void COleSafeArray::CreateOneDim(VARTYPE, DWORD, const void*, LONG) { throw _com_error(E_NOTIMPL); }
void COleSafeArray::PutElement(const LONG*, void*) { throw _com_error(E_NOTIMPL); }

// --- lists of strings --------------------------------------------------------------------------------------------------
long CStringArray::Add(const wchar_t* text) {
  strings_.emplace_back(text != nullptr ? text : L"");
  return GetSize() - 1;
}
long CStringArray::GetSize() const { return static_cast<long>(strings_.size()); }
const wchar_t* CStringArray::GetAt(long index) const {
  return index >= 0 && index < GetSize() ? strings_[static_cast<std::size_t>(index)].c_str() : L"";
}
void CStringArray::RemoveAll() { strings_.clear(); }
void CStringArray::FreeExtra() { strings_.shrink_to_fit(); }

// --- the exception -----------------------------------------------------------------------------------------------------
_com_error::_com_error(HRESULT result, const wchar_t* description)
    : result_(result), description_(SysAllocString(description)) {}
_com_error::_com_error(const _com_error& other) : _com_error(other.result_, other.description_) {}
_com_error::~_com_error() { SysFreeString(description_); }
_bstr_t _com_error::Description() const {
  return _bstr_t(description_ != nullptr ? description_ : L"The operation failed.");
}
