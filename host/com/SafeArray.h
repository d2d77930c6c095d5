#pragma once

// SAFEARRAY: an array that carries its bounds and its element type.

#include "host/com/HResult.h"
#include "host/com/Types.h"

struct SAFEARRAYBOUND {
  ULONG cElements;
  LONG lLbound;
};

struct SAFEARRAY {
  USHORT cDims;
  USHORT fFeatures;
  ULONG cbElements;
  ULONG cLocks;
  void* pvData;
  SAFEARRAYBOUND rgsabound[1];  // cDims of them, the last dimension first
};

inline constexpr USHORT FADF_BSTR = 0x0100;
inline constexpr USHORT FADF_UNKNOWN = 0x0200;
inline constexpr USHORT FADF_DISPATCH = 0x0400;
inline constexpr USHORT FADF_VARIANT = 0x0800;
inline constexpr USHORT FADF_HAVEVARTYPE = 0x0080;

extern "C" {
SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, const SAFEARRAYBOUND* bounds);
SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements);
HRESULT SafeArrayDestroy(SAFEARRAY* array);  // frees BSTRs, releases interfaces, clears VARIANTs in it
HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy);
UINT SafeArrayGetDim(SAFEARRAY* array);
HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type);
HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound);  // dimensions count from 1
HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound);
HRESULT SafeArrayGetElement(SAFEARRAY* array, const LONG* indices, void* element);  // a copy for the caller
HRESULT SafeArrayPutElement(SAFEARRAY* array, const LONG* indices, void* element);  // copies the element
HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
HRESULT SafeArrayUnaccessData(SAFEARRAY* array);
}
