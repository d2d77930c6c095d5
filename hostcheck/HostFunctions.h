#pragma once

// The host's free functions that are checked one by one, as a table: those that the process was linked with, or others.

#include "host/com/ComRuntime.h"
#include "host/com/OleSafeArray.h"
#include "host/platform/Memory.h"
#include "host/platform/Resources.h"
#include "host/platform/VectorBlock.h"

namespace velt::hostcheck {

struct HostFunctions {
  BSTR (*allocString)(const OLECHAR*) = &SysAllocString;
  void (*freeString)(BSTR) = &SysFreeString;
  void (*initVariant)(VARIANT*) = &VariantInit;
  HRESULT (*clearVariant)(VARIANT*) = &VariantClear;
  HRESULT (*arrayLowerBound)(SAFEARRAY*, UINT, LONG*) = &SafeArrayGetLBound;
  HRESULT (*arrayUpperBound)(SAFEARRAY*, UINT, LONG*) = &SafeArrayGetUBound;
  HRESULT (*arrayType)(SAFEARRAY*, VARTYPE*) = &SafeArrayGetVartype;
  HRESULT (*arrayElement)(SAFEARRAY*, const LONG*, void*) = &SafeArrayGetElement;
  void (*putElement)(COleSafeArray&, const LONG*, void*) =
      [](COleSafeArray& array, const LONG* index, void* element) { array.PutElement(index, element); };
  void* (*allocate)(std::size_t) = &_tqMalloc;
  void (*free)(void*) = &_tqFree;
  TqVectorBlock* emptyBlock = gpEmptyVectorData;
  HMODULE (*loadLibrary)(const wchar_t*, HANDLE, DWORD) = &LoadLibraryExW;
  INT (*loadString)(HMODULE, UINT, wchar_t*, INT) = &LoadStringW;
  HRESULT (*startCom)(void*) = &CoInitialize;
  void (*endCom)() = &CoUninitialize;
};

}  // namespace velt::hostcheck
