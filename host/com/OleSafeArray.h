#pragma once

// COleSafeArray: a VARIANT that owns a SAFEARRAY; VT_EMPTY until an array is created or attached.
//
// Failure: CreateOneDim, Attach, PutElement and GetElement throw _com_error.

#include "host/com/Variant.h"

// One owner of one array. Called by: operations that read property sources, which hold the sources in one. What it
// throws there is caught, and that source is left out.
class COleSafeArray : public VARIANT {
 public:
  // Holds nothing.
  COleSafeArray();
  // Destroys the array.
  ~COleSafeArray();
  COleSafeArray(const COleSafeArray&) = delete;
  COleSafeArray& operator=(const COleSafeArray&) = delete;

  // Destroys the array.
  void Clear();
  // Takes the array over; the argument becomes VT_EMPTY. What was held before is cleared.
  void Attach(VARIANT& variant);
  // Hands the array to the caller, and is VT_EMPTY from then on.
  VARIANT Detach();
  // Elements are zero, or copies of those in source. What was held before is cleared.
  void CreateOneDim(VARTYPE type, DWORD elements, const void* source = nullptr, LONG lowerBound = 0);
  // Stores a copy of the element, or a reference of its own. A BSTR is passed as it is, an interface as its pointer,
  // everything else by address.
  void PutElement(const LONG* index, void* element);
  // Writes a copy of the element, or a pointer with a reference, that is the caller's; element is its address.
  void GetElement(const LONG* index, void* element);
};
