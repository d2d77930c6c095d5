#pragma once

// COleSafeArray: a VARIANT that owns a SAFEARRAY; VT_EMPTY until an array is created or attached.

#include "host/com/Variant.h"

class COleSafeArray : public VARIANT {
 public:
  COleSafeArray();
  ~COleSafeArray();
  COleSafeArray(const COleSafeArray&) = delete;
  COleSafeArray& operator=(const COleSafeArray&) = delete;

  void Clear();
  void Attach(VARIANT& variant);  // takes the array over; the argument becomes VT_EMPTY
  VARIANT Detach();
  // Elements are zero (or copied from source); what was held before is cleared. Throws _com_error.
  void CreateOneDim(VARTYPE type, DWORD elements, const void* source = nullptr, LONG lowerBound = 0);
  // A BSTR is passed as it is, interfaces as their pointer, everything else by address. Throws _com_error.
  void PutElement(const LONG* index, void* element);
  void GetElement(const LONG* index, void* element);
};
