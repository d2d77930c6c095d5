#pragma once

// Arrays that a callee allocates with the task allocator and hands to the caller: the caller frees each
// string with SysFreeString and then both arrays with CoTaskMemFree.

#include "host/com/Bstr.h"
#include "host/com/Types.h"

struct CALPOLESTR {
  ULONG cElems;
  LPOLESTR* pElems;
};

struct CADWORD {
  ULONG cElems;
  DWORD* pElems;
};
