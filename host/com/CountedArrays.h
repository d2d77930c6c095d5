#pragma once

// The pair of arrays in which an object lists choices or elements: texts for the user, and for each text the cookie
// by which the object knows it.
//
// Ownership: the object allocates both arrays with CoTaskMemAlloc and each text as a BSTR. The caller frees every text
// with SysFreeString, and then both arrays with CoTaskMemFree.

#include "host/com/Bstr.h"
#include "host/com/Types.h"

// cElems texts.
struct CALPOLESTR {
  // How many there are.
  ULONG cElems;
  // The texts; null when there are none.
  LPOLESTR* pElems;
};

// cElems cookies.
struct CADWORD {
  // How many there are.
  ULONG cElems;
  // The cookies; null when there are none.
  DWORD* pElems;
};
