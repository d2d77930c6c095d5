#pragma once

// SAFEARRAY: an array that carries its bounds and its element type, and owns its elements.
//
// Called by: operations that read property sources, for arrays of names and of objects. When one of the functions
// fails, that array counts as holding nothing.
//
// Results are E_INVALIDARG for null arguments and DISP_E_BADINDEX for an index outside the bounds. Outputs stay
// untouched after a failure, but for `copy` of SafeArrayCopy, which becomes null.

#include "host/com/HResult.h"
#include "host/com/Types.h"

// One dimension of an array.
struct SAFEARRAYBOUND {
  // How many elements it has.
  ULONG cElements;
  // Its first index.
  LONG lLbound;
};

struct SAFEARRAY {
  // Number of dimensions. The layer reads arrays of one.
  USHORT cDims;
  // Flags FADF_...
  USHORT fFeatures;
  // Size of one element in bytes.
  ULONG cbElements;
  // How often SafeArrayAccessData was called and not taken back; while it is not 0 the array is not destroyed.
  ULONG cLocks;
  // The elements.
  void* pvData;
  // cDims of them, the last dimension first.
  SAFEARRAYBOUND rgsabound[1];
};

// What the elements are, so that they can be copied and freed.
inline constexpr USHORT FADF_BSTR = 0x0100;
inline constexpr USHORT FADF_UNKNOWN = 0x0200;
inline constexpr USHORT FADF_DISPATCH = 0x0400;
inline constexpr USHORT FADF_VARIANT = 0x0800;
// The element type stands in the four bytes before the array.
inline constexpr USHORT FADF_HAVEVARTYPE = 0x0080;

extern "C" {
// A new array with zeroed elements, the caller's to destroy; null when it cannot be made. bounds stand in the order of
// the dimensions, the first one first.
SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, const SAFEARRAYBOUND* bounds);
SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements);
// Frees the BSTRs, releases the interfaces and clears the VARIANTs in it. DISP_E_ARRAYISLOCKED while it is accessed.
// Does nothing for null.
HRESULT SafeArrayDestroy(SAFEARRAY* array);
// A second array with copies of the elements, the caller's to destroy. The copy of null is null.
HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy);

// Number of dimensions.
UINT SafeArrayGetDim(SAFEARRAY* array);
// The type of the elements.
HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type);
// The first and the last index of a dimension. Dimensions count from 1; the upper bound of an empty one is one less
// than its lower bound.
HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound);
HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound);

// indices has one index for each dimension, the first one first.
// Writes a copy of the element to the address `element`; the caller frees, releases or clears it.
HRESULT SafeArrayGetElement(SAFEARRAY* array, const LONG* indices, void* element);
// Stores a copy, and frees what stood there. A BSTR is passed as it is, an interface as its pointer, everything else by
// address.
HRESULT SafeArrayPutElement(SAFEARRAY* array, const LONG* indices, void* element);

// The elements themselves, the first dimension varying fastest. Every success is taken back by SafeArrayUnaccessData.
HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
HRESULT SafeArrayUnaccessData(SAFEARRAY* array);
}
